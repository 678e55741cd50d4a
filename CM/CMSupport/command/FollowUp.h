// What brings a unit into line after its command: header and mode, or a load of its file.
#pragma once

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

namespace command {

/// Brings the unit's header and then its mode into line with its file.
void updateHeader(IUnit &unit);
void updateMode(IUnit &unit);

/// The run of an operation that changes what the archive says about a unit, but not the model. After a good run
/// the guard, if there is one, is committed and header and mode are updated, with a line in the log for each.
class UpdatingRun : public CommandRun<IUnit> {
  public:
    using CommandRun<IUnit>::CommandRun;

  protected:
    void followUp(IUnit &unit, CMORYHandler *guard) override;
};

/// Loads a file of `directory` into the model and remembers the unit for other open projects. Null on failure.
IUnit *loadIntoModel(const CString &directory, const CString &fileName);

/// Tells, as the tool's property says, that the file could not be loaded; `errorText` becomes the message.
void reportLoadingFailure(const CString &fullFileName, CString &errorText);

} // namespace command
