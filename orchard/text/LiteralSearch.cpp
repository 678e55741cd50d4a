#include "orchard/text/LiteralSearch.h"

#include <algorithm>

namespace orchard {
namespace {

bool equalsIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char l, char r) { return lowerCase(l) == lowerCase(r); });
}

/// Finds the next of two characters without reading far beyond it, so that many calls are cheap.
std::size_t findEither(std::string_view text, char first, char second, std::size_t from) {
    constexpr std::size_t window = 128;
    while (from < text.size()) {
        const std::string_view part = text.substr(from, window);
        const auto found = std::min(part.find(first), part.find(second));
        if (found != std::string_view::npos) {
            return from + found;
        }
        from += part.size();
    }
    return std::string_view::npos;
}

} // namespace

char lowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
char upperCase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

std::size_t findIgnoringCase(std::string_view text, std::string_view what, std::size_t from) {
    const char low = lowerCase(what.front());
    const char high = upperCase(what.front());
    for (;; ++from) {
        from = low == high ? text.find(low, from) : findEither(text, low, high, from);
        if (from == std::string_view::npos || text.size() - from < what.size()) {
            return std::string_view::npos;
        }
        if (equalsIgnoringCase(text.substr(from, what.size()), what)) {
            return from;
        }
    }
}

std::size_t findText(std::string_view text, std::string_view what, std::size_t from) {
    // Blocks are searched for positions where the first and the last character fit, which a compiler turns into
    // few instructions.
    constexpr std::size_t block = 64;
    const std::size_t span = what.size() - 1;
    for (; what.size() > 1 && from <= text.size() && text.size() - from >= block + span; from += block) {
        const char *const first = text.data() + from;
        const char *const last = first + span;
        unsigned char fits = 0;
        for (std::size_t i = 0; i < block; ++i) {
            fits |= static_cast<unsigned char>(static_cast<unsigned char>(first[i] == what.front()) &
                                               static_cast<unsigned char>(last[i] == what.back()));
        }
        if (fits != 0) {
            const std::size_t found = text.substr(from, block + span).find(what);
            if (found != std::string_view::npos) {
                return from + found;
            }
        }
    }
    return text.find(what, from);
}

} // namespace orchard
