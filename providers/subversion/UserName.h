// Finds the name by which a repository knows the user.
#pragma once

#include "providers/subversion/Client.h"

#include <string>

namespace svnscc {

/// The name that the host or the settings give; else the name that Subversion has stored for the server of the
/// open project; else the name in the operating system.
std::string userName(Client &client);

} // namespace svnscc
