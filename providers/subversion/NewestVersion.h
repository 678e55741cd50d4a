// Brings files to the newest version of the repository.
#pragma once

#include "providers/subversion/Client.h"
#include "providers/subversion/FileState.h"

#include <vector>

namespace svnscc {

/// Updates the files, `states` being theirs. What was changed locally in a file that isn't checked out here would
/// be lost: it is kept beside the file, which the user is told. A file that is checked out here is only restored
/// if it is missing. On failure throws Failure.
void bringToNewest(Client &client, const Names &names, const std::vector<FileState> &states);

} // namespace svnscc
