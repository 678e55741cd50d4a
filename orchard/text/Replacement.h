// The replacement text of a substitution, as pure text work.
#pragma once

#include <string>
#include <string_view>

namespace orchard {

/// What a replacement text puts in. A backslash before a dollar or a backslash takes its special meaning away:
/// the two yield the second one. Any other backslash, and any other dollar, stands for itself.
std::string replacementText(std::string_view replacement);

} // namespace orchard
