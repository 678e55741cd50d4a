#include "CM/CMSupport/core/Unquotable.h"

#include "CM/CMSupport/resources/Format.h"
#include "CM/platform/Quotable.h"

#include <algorithm>

namespace paths {

std::string unquotableIn(std::string_view path) {
    const auto found = platform::findUnquotable(path);
    if (!found) {
        return {};
    }
    switch (found->kind) {
    case platform::Unquotable::Kind::character:
        return resources::format(resources::Text::namedCharacter, {std::string_view(&found->character, 1)});
    case platform::Unquotable::Kind::controlCharacter:
        return resources::text(resources::Text::controlCharacter);
    case platform::Unquotable::Kind::conditional:
        return resources::text(resources::Text::conditionalOfTemplates);
    case platform::Unquotable::Kind::backslashAtEnd:
        break;
    }
    return resources::text(resources::Text::backslashAtEnd);
}

std::string shownPath(std::string_view path) {
    std::string shown(path);
    std::ranges::replace_if(shown, platform::isControlCharacter, '?');
    return shown;
}

} // namespace paths
