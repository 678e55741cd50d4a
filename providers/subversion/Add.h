// Adds files and directories to the repository.
#pragma once

#include "providers/subversion/Client.h"

#include "CM/scc/scc.h"

#include <vector>

namespace svnscc {

/// Returns the result of SccAdd; `flags` has a word for each name. Either all are added, with the new directories
/// above them and in one commit, or none. Files get svn:needs-lock, and texts svn:keywords. On failure of the
/// commit throws Failure.
SCCRTN addFiles(Client &client, const Names &names, const std::string &comment, const std::vector<long> &flags);

} // namespace svnscc
