// Command: one verb of the program. Its options are members; declare() binds them to the command line, run() does
// the work on whatever the context offers. A command that can't go on throws a Failure.
#pragma once

#include "apps/orchard-cm/base/ExitCode.h"
#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/options/GlobalOptions.h"

#include <memory>
#include <span>
#include <string_view>

namespace CLI {
class App;
}

namespace orchard_cm {

class Session;

/// What a command works with.
struct Context {
    const GlobalOptions &options;
    Output &output;
    Session &session;
};

class Command {
  public:
    Command() = default;
    Command(const Command &) = delete;
    Command &operator=(const Command &) = delete;
    virtual ~Command() = default;

    virtual void declare(CLI::App &app) = 0;
    virtual ExitCode run(Context &context) = 0;
};

/// A command as the parser knows it.
struct CommandEntry {
    std::string_view name;
    std::string_view summary;
    std::unique_ptr<Command> (*make)();
    bool inBatch; ///< whether it may stand in a batch
};

/// All commands, in the order of the help text.
std::span<const CommandEntry> allCommands();

} // namespace orchard_cm
