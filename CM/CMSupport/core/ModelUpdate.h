// Updates the model from a unit file that a tool has changed.
#pragma once

#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

namespace core {

/// Loads a file of `directory` into the model and remembers the unit for other open projects. Returns null on
/// failure.
IUnit *loadIntoModel(const CString &directory, const CString &fileName);

/// Reads the unit's file again: in place if the host can, else as a new unit. Returns the unit that is now in the
/// model, which may be another object, or null on failure.
IUnit *reloadUnit(IUnit &unit);

/// Does the same for a file that may be an older version. After a reload in place, renames the file if the unit's
/// name has changed.
IUnit *reloadUnitAndRenameFile(IUnit &unit);

/// Renames the unit's file after a reload that changed the unit's name, if the file had the old name and the host
/// allows it. `oldName` is the name of the unit before the reload, `oldFileName` that of its file, without
/// extension. The unit may be null.
void renameFileIfNeeded(IUnit *unit, const CString &oldName, const CString &oldFileName);

/// Reports that the file could not be loaded, in the place that the tool's property ReportLoadingError names;
/// `errorText` receives the message.
void reportLoadingFailure(const CString &fullFileName, CString &errorText);

} // namespace core
