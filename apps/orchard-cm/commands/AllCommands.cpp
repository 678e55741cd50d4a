#include "apps/orchard-cm/commands/Commands.h"

#include <array>

namespace orchard_cm {

std::span<const CommandEntry> allCommands() {
    static constexpr std::array entries{
        CommandEntry{"new", "Make a project: a small sample, or one with many generated units", makeNewCommand,
                     false},
        CommandEntry{"list", "List the units of the workspace", makeListCommand, true},
        CommandEntry{"show", "Show what the loaded model holds of a unit", makeShowCommand, true},
        CommandEntry{"checkout", "Check units out and reload them", makeCheckoutCommand, true},
        CommandEntry{"expand", "Show what a command template expands to, without running it", makeExpandCommand,
                     true},
        CommandEntry{"property", "Show and set properties", makePropertyCommand, true},
        CommandEntry{"tool", "Show or choose the project's CM tool", makeToolCommand, true},
        CommandEntry{"tools", "List the CM tools that are installed", makeToolsCommand, true},
        CommandEntry{"batch", "Run commands from a file or the standard input on one loaded model",
                     makeBatchCommand, false},
    };
    return entries;
}

} // namespace orchard_cm
