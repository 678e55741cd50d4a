// Gets the newest versions of files.
#pragma once

#include "providers/subversion/Client.h"

#include "CM/scc/scc.h"

namespace svnscc {

/// Returns the result of SccGet for files, which are read-only afterwards.
SCCRTN getFiles(Client &client, const Names &names);

/// Returns the result of SccGet for all files in the directories, with `isRecursive` also in those below.
SCCRTN getDirectories(Client &client, const Names &directories, bool isRecursive);

} // namespace svnscc
