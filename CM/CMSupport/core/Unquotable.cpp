#include "CM/CMSupport/core/Unquotable.h"

#include "CM/CMSupport/resources/Format.h"

#include <algorithm>

namespace paths {

namespace {

bool isControl(char character) {
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char deleteCharacter = 0x7F;
    const auto code = static_cast<unsigned char>(character);
    return code < firstPrintable || code == deleteCharacter;
}

/// A path takes its place in a template before the template is searched for conditionals.
bool holdsConditional(std::string_view path) {
    constexpr auto none = std::string_view::npos;
    const auto open = path.find('(');
    const auto question = open == none ? none : path.find('?', open);
    return question != none && path.find(')', question) != none;
}

} // namespace

std::string unquotableIn(std::string_view path) {
    constexpr std::string_view refused = "\"$`>";
    const auto *const found = std::ranges::find_if(path, [&](char character) {
        return isControl(character) || refused.find(character) != std::string_view::npos;
    });
    if (found != path.end()) {
        return isControl(*found)
                   ? resources::text(resources::Text::controlCharacter)
                   : resources::format(resources::Text::namedCharacter, {std::string_view(found, 1)});
    }
    if (holdsConditional(path)) {
        return resources::text(resources::Text::conditionalOfTemplates);
    }
    return path.ends_with('\\') ? resources::text(resources::Text::backslashAtEnd) : "";
}

std::string shownPath(std::string_view path) {
    std::string shown(path);
    std::ranges::replace_if(shown, isControl, '?');
    return shown;
}

} // namespace paths
