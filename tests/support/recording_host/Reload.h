// Reloading as a test scripts it. Each function is called after the call was written down.
#pragma once

#include "CM/host/Iterators.h"
#include "CM/platform/CStringList.h"

#include <functional>

namespace recording {

struct Reload {
    /// Without a function every unit can be reloaded in place.
    std::function<bool(const IUnit *unit, int flag)> canReload;
    /// Without a function the unit itself comes back. Null is a file that could not be read.
    std::function<IUnit *(IUnit *unit, int flag)> reloadUnit;
    /// Without a function null comes back.
    std::function<IUnit *(const CString &directory, const CString &fileName, int flag)> addToModel;
    /// Non-zero says that both pictures of the file hold the same. Without a function 0.
    std::function<int(const CString &path)> compare;
    std::function<void(IUnit *unit)> atm;

    /// What the recursive helper appends. Without a function nothing.
    std::function<void(const CString &path, CStringList &files, int flag)> filesIn;
    std::function<void(const IUnit *unit, CStringList &files, int recursive, int information)> filesInUnit;
    std::function<void(const IUnit *unit, CList<IUnit *, IUnit *> &units)> informationUnits;
    std::function<void(const CString &fileName, CStringList &files)> informationFiles;
};

} // namespace recording
