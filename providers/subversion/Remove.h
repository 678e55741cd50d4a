// Removes files and directories from the repository.
#pragma once

#include "providers/subversion/Client.h"

#include "CM/scc/scc.h"

namespace svnscc {

/// Returns the result of SccRemove. Either all are removed, in one commit, or none; the local files stay, and are
/// writable. On failure of the commit throws Failure.
SCCRTN removeFiles(Client &client, const Names &names, const std::string &comment);

} // namespace svnscc
