// Defines Command, one verb of the program. Its options are members. declare() binds them to the command line;
// run() does the work in the given context. A command that can't continue throws a Failure.
#pragma once

#include "apps/orchard-cm/base/ExitCode.h"
#include "apps/orchard-cm/base/Output.h"
#include "apps/orchard-cm/options/GlobalOptions.h"

#include <memory>
#include <string_view>

namespace CLI {
class App;
}

namespace orchard_cm {

class Session;

/// Holds what a command works with.
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

/// Describes a command to the parser.
struct CommandEntry {
    std::string_view name;
    std::string_view summary;
    std::unique_ptr<Command> (*make)();
    bool inBatch; ///< whether it is allowed in a batch
};

} // namespace orchard_cm
