// Renames and moves files and directories in the repository.
#pragma once

#include "providers/subversion/Client.h"

namespace svnscc {

/// Moves `from` to `to` in the repository, with its history and in one commit. The host may have renamed the local
/// file already; if it hasn't, the local file keeps its name, as the API asks, but a directory is moved. Files
/// that are checked out stay so under the new name, with the changes that they have. On failure throws Failure,
/// and the local files are as they were.
void renameFile(Client &client, const std::string &from, const std::string &to);

} // namespace svnscc
