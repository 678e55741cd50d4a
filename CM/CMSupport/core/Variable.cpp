#include "CM/CMSupport/core/Variable.h"

#include "CM/host/SPString.h"

namespace {

const SPString theArgumentPattern(R"(\${?([a-zA-Z_][a-zA-Z0-9_]*)}?)");

// Returns whether a byte may be part of a name. Bytes beyond ASCII are accepted here and judged by the pattern:
// some letters are the other case of an ASCII letter.
constexpr bool mayBelong(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '_' ||
           static_cast<unsigned char>(character) >= 0x80;
}

// Returns the last position at which a variable that begins at `dollar` can end. Accepts one brace on either side,
// not a run of braces, which would make a text of braces take quadratic time.
std::size_t latestEnd(std::string_view text, std::size_t dollar) {
    auto end = dollar + 1;
    if (end < text.size() && text[end] == '{') {
        ++end;
    }
    while (end < text.size() && mayBelong(text[end])) {
        ++end;
    }
    return end < text.size() && text[end] == '}' ? end + 1 : end;
}

} // namespace

std::optional<Variable> findVariable(std::string_view text, std::size_t from) {
    SPStringList matches(2);
    for (auto at = text.find('$', from); at != text.npos; at = text.find('$', at + 1)) {
        const SPString candidate(std::string(text.substr(at, latestEnd(text, at) - at)));
        if (candidate.m(theArgumentPattern, matches, "i") != 0) {
            return Variable{at, matches[0], matches[1]};
        }
    }
    return std::nullopt;
}
