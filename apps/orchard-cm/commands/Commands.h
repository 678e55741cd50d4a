// Declares the functions that make the commands, each of which has its own source file.
#pragma once

#include "apps/orchard-cm/options/Command.h"

#include <memory>

namespace orchard_cm {

std::unique_ptr<Command> makeNewCommand();
std::unique_ptr<Command> makeRecoverCommand();
std::unique_ptr<Command> makeListCommand();
std::unique_ptr<Command> makeShowCommand();
std::unique_ptr<Command> makeHeaderCommand();
std::unique_ptr<Command> makeCheckoutCommand();
std::unique_ptr<Command> makeCheckinCommand();
std::unique_ptr<Command> makeLockCommand();
std::unique_ptr<Command> makeUnlockCommand();
std::unique_ptr<Command> makeUndoCommand();
std::unique_ptr<Command> makeAddCommand();
std::unique_ptr<Command> makeArchiveCommand();
std::unique_ptr<Command> makeFetchCommand();
std::unique_ptr<Command> makeHistoryCommand();
std::unique_ptr<Command> makeConnectCommand();
std::unique_ptr<Command> makeMoveCommand();
std::unique_ptr<Command> makeRenameCommand();
std::unique_ptr<Command> makeDeleteCommand();
std::unique_ptr<Command> makeExpandCommand();
std::unique_ptr<Command> makePropertyCommand();
std::unique_ptr<Command> makeToolCommand();
std::unique_ptr<Command> makeToolsCommand();
std::unique_ptr<Command> makeBatchCommand();

} // namespace orchard_cm
