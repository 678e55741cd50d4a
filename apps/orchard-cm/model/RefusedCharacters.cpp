#include "apps/orchard-cm/model/RefusedCharacters.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/platform/Quotable.h"

#include <algorithm>

namespace orchard_cm {

namespace {

std::string refused(const char *key) {
    const IProperty *const property = CMProperty::getToolProperty(key, nullptr, IProperty::inherited, false);
    return property == nullptr ? std::string(shellCharacters) : property->getValue().str();
}

std::string nameOf(char c) {
    switch (c) {
    case '\n':
        return "a line end";
    case '\t':
        return "a tab";
    case ' ':
        return "a blank";
    default:
        return platform::isControlCharacter(c) ? "a control character" : std::string("the character ") + c;
    }
}

/// Returns a message in which `reason` follows the name of a character from `refused`. A control character that is
/// not in `allowed` is refused as well.
std::string fault(std::string_view text, std::string_view refused, std::string_view allowed, const char *reason) {
    const auto found = std::ranges::find_if(text, [&](char c) {
        return refused.find(c) != std::string_view::npos ||
               (platform::isControlCharacter(c) && allowed.find(c) == std::string_view::npos);
    });
    return found == text.end() ? std::string() : "it contains " + nameOf(*found) + reason;
}

} // namespace

std::string refusedInLabel() { return refused(refusedInLabelKey); }
std::string refusedInLog() { return refused(refusedInLogKey); }

std::string labelFault(std::string_view label, std::string_view refused) {
    if (label.starts_with('-')) {
        return "it begins with the character -, as an option does";
    }
    return fault(label, refused, {}, ", which has a meaning to the shell or to the tool");
}

std::string commentFault(std::string_view comment, std::string_view refused) {
    return fault(comment, refused, "\n\t", ", which has a meaning to the shell or to the tool");
}

} // namespace orchard_cm
