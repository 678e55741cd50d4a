// Which labels may go into the command line of a tool.
#pragma once

#include <string>
#include <string_view>

namespace orchard_cm {

/// Why the label could do something else than name a version when it stands in a command line, with the character
/// in question; empty for a label that is safe. Safe is also the empty label, and one with blanks.
std::string labelFault(std::string_view label);

} // namespace orchard_cm
