#include "apps/orchard-cm/checkout/LabelCheck.h"

#include <algorithm>

namespace orchard_cm {

namespace {

// A label goes bare into a template, in double quotes, or, if the template has them, in single ones; none of these
// may be left, and nothing may be expanded or redirected in them.
constexpr std::string_view shellCharacters = "\"'$`\\;&|<>()";

bool isControl(char c) {
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char deleteCharacter = 0x7f;
    const auto code = static_cast<unsigned char>(c);
    return code < firstPrintable || code == deleteCharacter;
}

std::string nameOf(char c) {
    if (c == '\n') {
        return "a line end";
    }
    return isControl(c) ? "a control character" : std::string("the character ") + c;
}

} // namespace

std::string labelFault(std::string_view label) {
    if (label.starts_with('-')) {
        return "it begins with the character -, as an option does";
    }
    const auto found = std::ranges::find_if(
        label, [](char c) { return isControl(c) || shellCharacters.find(c) != std::string_view::npos; });
    return found == label.end() ? std::string()
                                : "it holds " + nameOf(*found) + ", which has a meaning to the shell";
}

} // namespace orchard_cm
