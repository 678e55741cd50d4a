// The characters that the tool in use can't be given in a text of the user.
#pragma once

#include <string>

namespace orchard_cm {

/// The value of the tool's property RefusedInLabel or RefusedInLog; without one, all that have a meaning to a
/// shell.
std::string refusedInLabel();
std::string refusedInLog();

} // namespace orchard_cm
