#include "orchard/text/Replacement.h"

namespace orchard {

std::string replacementText(std::string_view replacement) {
    std::string text;
    text.reserve(replacement.size());
    for (std::size_t at = 0; at < replacement.size(); ++at) {
        const bool isEscape = replacement[at] == '\\' && at + 1 < replacement.size() &&
                              (replacement[at + 1] == '$' || replacement[at + 1] == '\\');
        at += isEscape ? 1 : 0;
        text += replacement[at];
    }
    return text;
}

} // namespace orchard
