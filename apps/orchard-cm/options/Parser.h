// Turns the words of a command line, or of a line of a batch, into a command that is ready to run.
#pragma once

#include "apps/orchard-cm/options/Command.h"
#include "apps/orchard-cm/options/GlobalOptions.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace orchard_cm {

struct Invocation {
    GlobalOptions options;
    std::string name; ///< the command with its action ("property get"); empty if there is only text
    std::unique_ptr<Command> command; ///< null if there is only text to show
    std::string text;                 ///< help or version, when asked for
};

/// Parses the words after the program's name. Throws a Failure with ExitCode::usage.
Invocation parseCommandLine(const std::vector<std::string> &words, std::span<const CommandEntry> commands);
/// Parses the words of one line of a batch: a command with its own options, without the global ones.
Invocation parseBatchLine(const std::vector<std::string> &words, std::span<const CommandEntry> commands);

/// Returns the first word that is a command, for the record of a command line that can't be parsed; empty if there
/// is none.
std::string commandIn(const std::vector<std::string> &words, std::span<const CommandEntry> commands);

/// Returns whether JSON output is requested. It looks only at the words, because a command line that can't be
/// parsed must be answered in the requested form, too.
bool wantsJson(const std::vector<std::string> &words);

} // namespace orchard_cm
