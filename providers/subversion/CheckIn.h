// Checks files in: one commit for all of them.
#pragma once

#include "providers/subversion/Client.h"

#include "CM/scc/scc.h"

namespace svnscc {

/// Returns the result of SccCheckin. Either all of the files are checked in or, if one can't be, none. With `keep`
/// they stay checked out. On failure of the commit throws Failure.
SCCRTN checkIn(Client &client, const Names &names, const std::string &comment, bool keep);

/// The same for the files of a task, which need not be checked out, and are not afterwards.
SCCRTN checkInAnyway(Client &client, const Names &names, const std::string &comment);

} // namespace svnscc
