// What brings a unit into line after its command: header and mode, or a load of its file.
#pragma once

#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

namespace command {

/// Brings the unit's header and then its mode into line with its file.
void updateHeader(IUnit &unit);
void updateMode(IUnit &unit);

/// Loads a file of `directory` into the model and remembers the unit for other open projects. Null on failure.
IUnit *loadIntoModel(const CString &directory, const CString &fileName);

/// Tells, as the tool's property says, that the file could not be loaded; `errorText` becomes the message.
void reportLoadingFailure(const CString &fullFileName, CString &errorText);

} // namespace command
