// Answers what the host asks about many files: their states, and which there are.
#pragma once

#include "providers/subversion/Client.h"

#include "CM/scc/scc.h"

#include <vector>

namespace svnscc {

/// The SCC_STATUS_ word of each name, in their order. On failure throws Failure.
std::vector<long> statusWords(Client &client, const Names &names);

/// Reports to the callback the files that a command applies to: those in the directories and below, or all of the
/// project without directories. Ends early if the callback asks for it.
struct Enumeration {
    SCCCOMMAND command;
    POPLISTFUNC callback;
    void *data;
};
void enumerate(Client &client, const Names &directories, const Enumeration &enumeration);

/// Asks the callback to drop the given files that the command doesn't apply to; returns their status words.
std::vector<long> dropUnfit(Client &client, const Names &names, const Enumeration &enumeration);

} // namespace svnscc
