// Gives up check outs.
#pragma once

#include "providers/subversion/Client.h"

#include "CM/scc/scc.h"

namespace svnscc {

/// Returns the result of SccUncheckout: the files are as they were checked out, and their locks are released. On
/// failure of the request as a whole throws Failure.
SCCRTN undoCheckOut(Client &client, const Names &names);

} // namespace svnscc
