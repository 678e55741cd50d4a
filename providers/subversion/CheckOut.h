// Checks files out: the newest version, with a lock.
#pragma once

#include "providers/subversion/Client.h"

#include "CM/scc/scc.h"

namespace svnscc {

/// Returns the result of SccCheckout. The files take part in the current task. On failure of the request as a
/// whole throws Failure.
SCCRTN checkOut(Client &client, const Names &names, const std::string &comment);

} // namespace svnscc
