// What brings a unit into line after its command: header and mode, or a load of its file.
#pragma once

#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

namespace command {

/// Takes the unit's CM header from its file. A file that can't be read leaves the header as it was.
void updateHeader(IUnit &unit);
/// Brings the unit's mode into line with what its file permits.
void updateMode(IUnit &unit);

/// Loads a file of `directory` into the model and remembers the unit for other open projects. Null on failure.
IUnit *loadIntoModel(const CString &directory, const CString &fileName);

/// Tells, as the tool's property says, that the file could not be loaded; `errorText` becomes the message.
void reportLoadingFailure(const CString &fullFileName, CString &errorText);

} // namespace command
