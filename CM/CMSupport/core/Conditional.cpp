#include "CM/CMSupport/core/Conditional.h"

#include "CM/CMSupport/core/DebugTrace.h"

#include <algorithm>

namespace {

// Trims only blanks, since tabs and newlines may be intended. Test:
// ExpandConditional.TrimsBlanksButNoOtherWhiteSpaceOfTheParts.
std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

// Returns the trimmed text between two delimiters.
std::string_view between(std::string_view text, std::size_t left, std::size_t right) {
    return trimmed(text.substr(left + 1, right - left - 1));
}

} // namespace

std::optional<Conditional> findConditional(std::string_view text) {
    constexpr auto none = std::string_view::npos;
    const auto open = text.find('(');
    if (open == none) {
        return std::nullopt;
    }
    const auto question = text.find('?', open);
    if (question == none) {
        debugTrace({"could not find the then part\n"});
        return std::nullopt;
    }
    // Required: the closing parenthesis is the last one of the text, not the matching one, so that an else-text
    // can contain a conditional. Test: ExpandConditional.SwallowsASecondConditionalIntoTheLastPartOfTheFirst.
    const auto close = text.rfind(')');
    const auto colon = text.find(':', question);
    Conditional found;
    if (colon == none) {
        if (close == none || close < question) {
            debugTrace({"could not find the condition end after the then part\n"});
            return std::nullopt;
        }
        found.thenPart = between(text, question, close);
    } else {
        if (close == none || close < colon) {
            debugTrace({"could not find the condition end after the else part\n"});
            return std::nullopt;
        }
        found.thenPart = between(text, question, colon);
        found.elsePart = between(text, colon, close);
    }
    found.start = open;
    found.end = close;
    found.ifPart = between(text, open, question);
    debugTrace({"if: '", found.ifPart, "' Then: '", found.thenPart, "' Else: '", found.elsePart, "'\n"});
    return found;
}
