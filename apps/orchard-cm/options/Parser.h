// Parser: from the words of a command line, or of a line of a batch, to a command that is ready to run.
#pragma once

#include "apps/orchard-cm/commands/Command.h"
#include "apps/orchard-cm/options/GlobalOptions.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace orchard_cm {

struct Invocation {
    GlobalOptions options;
    std::string name;                 ///< of the command, with its action: "property get"; empty with text only
    std::unique_ptr<Command> command; ///< null if there is only text to show
    std::string text;                 ///< help or version, when asked for
};

/// Parses the words behind the program's name. Throws a Failure of usage.
Invocation parseCommandLine(const std::vector<std::string> &words, std::span<const CommandEntry> commands);
/// Parses the words of one line of a batch: a command with its own options, none of the global ones.
Invocation parseBatchLine(const std::vector<std::string> &words, std::span<const CommandEntry> commands);

/// The first word that is a command, for the record of one that can't be parsed; empty if there is none.
std::string commandIn(const std::vector<std::string> &words, std::span<const CommandEntry> commands);

/// Whether machine-readable output is asked for, told from the words alone, since also a command line that can't
/// be parsed is to be answered in the form asked for.
bool wantsJson(const std::vector<std::string> &words);

} // namespace orchard_cm
