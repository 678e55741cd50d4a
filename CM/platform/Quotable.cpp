#include "CM/platform/Quotable.h"

#include <algorithm>

namespace platform {

bool canMakeConditional(std::string_view names) {
    return std::ranges::all_of(std::string_view("(?)"),
                               [names](char character) { return names.find(character) != names.npos; });
}

std::optional<Unquotable> findUnquotable(std::string_view path) {
    constexpr std::string_view refused = "\"$`>";
    const auto found = std::ranges::find_if(path, [&](char character) {
        return isControlCharacter(character) || refused.find(character) != refused.npos;
    });
    if (found != path.end()) {
        using enum Unquotable::Kind;
        return Unquotable{isControlCharacter(*found) ? controlCharacter : character, *found};
    }
    if (canMakeConditional(path)) {
        return Unquotable{Unquotable::Kind::conditional, '\0'};
    }
    if (path.ends_with('\\')) {
        return Unquotable{Unquotable::Kind::backslashAtEnd, '\0'};
    }
    return std::nullopt;
}

} // namespace platform
