// Scripts reloading for a test. Each function is called after the call was recorded.
#pragma once

#include "CM/host/Iterators.h"
#include "CM/platform/CStringList.h"

#include <functional>

namespace recording {

struct ReloadScript {
    /// By default every unit can be reloaded in place.
    std::function<bool(const IUnit *unit, int flag)> canReload;
    /// By default returns the unit itself. Null means a file that could not be read.
    std::function<IUnit *(IUnit *unit, int flag)> reloadUnit;
    /// By default returns null.
    std::function<IUnit *(const CString &directory, const CString &fileName, int flag)> addToModel;
    /// Non-zero means that both records of the file are the same. By default 0.
    std::function<int(const CString &path)> compare;
    std::function<void(IUnit *unit)> atm;

    /// The files that the recursive helper appends. By default none.
    std::function<void(const CString &path, CStringList &files, int flag)> filesIn;
    std::function<void(const IUnit *unit, CStringList &files, int recursive, int information)> filesInUnit;
    std::function<void(const IUnit *unit, CList<IUnit *, IUnit *> &units)> informationUnits;
    std::function<void(const CString &fileName, CStringList &files)> informationFiles;
};

} // namespace recording
