#include "CM/platform/Quotable.h"

#include <algorithm>

namespace platform {

namespace {

bool holdsConditional(std::string_view path) {
    const auto open = path.find('(');
    const auto question = open == path.npos ? open : path.find('?', open);
    return question != path.npos && path.find(')', question) != path.npos;
}

} // namespace

std::optional<Unquotable> findUnquotable(std::string_view path) {
    constexpr std::string_view refused = "\"$`>";
    const auto found = std::ranges::find_if(path, [&](char character) {
        return isControlCharacter(character) || refused.find(character) != refused.npos;
    });
    if (found != path.end()) {
        using enum Unquotable::Kind;
        return Unquotable{isControlCharacter(*found) ? controlCharacter : character, *found};
    }
    if (holdsConditional(path)) {
        return Unquotable{Unquotable::Kind::conditional, '\0'};
    }
    if (path.ends_with('\\')) {
        return Unquotable{Unquotable::Kind::backslashAtEnd, '\0'};
    }
    return std::nullopt;
}

} // namespace platform
