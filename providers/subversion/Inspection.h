// Shows what the repository knows of files, as text.
#pragma once

#include "providers/subversion/Client.h"

#include "CM/scc/scc.h"

namespace svnscc {

/// Returns the result of SccHistory: shows the revisions of each file, newest first. On failure throws Failure.
SCCRTN showHistory(Client &client, const Names &names);

/// Returns the result of SccProperties: shows address, revisions, lock and properties of a file or directory. On
/// failure throws Failure.
SCCRTN showProperties(Client &client, const std::string &name);

/// Returns the result of SccDiff: whether a file differs from the newest version. On failure throws Failure.
SCCRTN compare(Client &client, const std::string &name);

} // namespace svnscc
