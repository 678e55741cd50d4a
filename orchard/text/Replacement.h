// Interprets the replacement text of a substitution, as pure text processing.
#pragma once

#include <string>
#include <string_view>

namespace orchard {

/// Returns the text that a replacement inserts. A backslash before a dollar or a backslash is removed. Any other
/// backslash or dollar is literal. Test: Substitute.ABackslashTakesAwayTheMeaningOfADollarOrABackslash.
std::string replacementText(std::string_view replacement);

} // namespace orchard
