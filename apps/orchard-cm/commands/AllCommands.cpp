#include "apps/orchard-cm/commands/AllCommands.h"

#include "apps/orchard-cm/commands/Commands.h"

#include <array>

namespace orchard_cm {

std::span<const CommandEntry> allCommands() {
    static constexpr std::array entries{
        CommandEntry{"new", "Create a project: a small sample, or one with many generated units", makeNewCommand,
                     false},
        CommandEntry{"connect", "Link the project to an archive of the CM tool", makeConnectCommand, true},
        CommandEntry{"add", "Add units to the archive", makeAddCommand, true},
        CommandEntry{"checkout", "Check units out and reload them", makeCheckoutCommand, true},
        CommandEntry{"checkin", "Check units in", makeCheckinCommand, true},
        CommandEntry{"undo", "Undo the check out of units and reload them", makeUndoCommand, true},
        CommandEntry{"lock", "Lock units", makeLockCommand, true},
        CommandEntry{"unlock", "Release the locks of units", makeUnlockCommand, true},
        CommandEntry{"fetch", "Get files from the archive, without a lock", makeFetchCommand, true},
        CommandEntry{"history", "Show the history of units", makeHistoryCommand, true},
        CommandEntry{"archive", "List the contents of the archive", makeArchiveCommand, true},
        CommandEntry{"move", "Move a unit to another owner, in the model and in the archive", makeMoveCommand,
                     true},
        CommandEntry{"rename", "Rename a unit, in the model and in the archive", makeRenameCommand, true},
        CommandEntry{"delete", "Delete units, from the model and from the archive", makeDeleteCommand, true},
        CommandEntry{"recover", "Show, finish or undo a move, rename or delete that was interrupted",
                     makeRecoverCommand, false},
        CommandEntry{"list", "List the units of the workspace", makeListCommand, true},
        CommandEntry{"show", "Show the details of a unit in the loaded model", makeShowCommand, true},
        CommandEntry{"header", "Show the CM header of a unit, with its version and locker", makeHeaderCommand,
                     true},
        CommandEntry{"expand", "Show the expansion of a command template, without running it", makeExpandCommand,
                     true},
        CommandEntry{"property", "Show and set properties", makePropertyCommand, true},
        CommandEntry{"tool", "Show or choose the project's CM tool, or check a tool's property set",
                     makeToolCommand, true},
        CommandEntry{"tools", "List the installed CM tools", makeToolsCommand, true},
        CommandEntry{"batch", "Run commands from a file or standard input on one loaded model", makeBatchCommand,
                     false},
    };
    return entries;
}

} // namespace orchard_cm
