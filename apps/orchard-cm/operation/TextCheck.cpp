#include "apps/orchard-cm/operation/TextCheck.h"

#include <algorithm>

namespace orchard_cm {

namespace {

bool isControl(char c) {
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char deleteCharacter = 0x7f;
    const auto code = static_cast<unsigned char>(c);
    return code < firstPrintable || code == deleteCharacter;
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
        return isControl(c) ? "a control character" : std::string("the character ") + c;
    }
}

/// `reason` follows the name of a character of `refused`; a control character that is not among `allowed` is
/// refused as well.
std::string fault(std::string_view text, std::string_view refused, std::string_view allowed, const char *reason) {
    const auto found = std::ranges::find_if(text, [&](char c) {
        return refused.find(c) != std::string_view::npos ||
               (isControl(c) && allowed.find(c) == std::string_view::npos);
    });
    return found == text.end() ? std::string() : "it holds " + nameOf(*found) + reason;
}

/// A path is put into a template before conditionals are looked for.
bool holdsConditional(std::string_view path) {
    constexpr auto none = std::string_view::npos;
    const auto open = path.find('(');
    const auto question = open == none ? none : path.find('?', open);
    return question != none && path.find(')', question) != none;
}

} // namespace

std::string labelFault(std::string_view label, std::string_view refused) {
    if (label.starts_with('-')) {
        return "it begins with the character -, as an option does";
    }
    return fault(label, refused, {}, ", which has a meaning to the shell or to the tool");
}

std::string commentFault(std::string_view comment, std::string_view refused) {
    return fault(comment, refused, "\n\t", ", which has a meaning to the shell or to the tool");
}

std::string pathFault(std::string_view path) {
    std::string found = fault(path, unquotableCharacters, {}, ", which a command line can't quote");
    return found.empty() && holdsConditional(path) ? "it holds a \"(\", a \"?\" and a \")\" in this order, which "
                                                     "a command template takes for a condition"
                                                   : found;
}

} // namespace orchard_cm
