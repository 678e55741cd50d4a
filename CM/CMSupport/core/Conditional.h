// Finds the conditional of a command template: "(condition ? then-text : else-text)" or "(condition ? then-text)".
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

struct Conditional {
    std::size_t start = 0; ///< position of the opening parenthesis
    std::size_t end = 0;   ///< position of the closing one
    // The parts without the blanks at their ends, as views of the text that was searched.
    std::string_view ifPart;
    std::string_view thenPart;
    std::string_view elsePart;
};

/// Finds the first conditional of a text. There is no nesting and no quoting: the closing parenthesis is the last
/// one in the text, and the first colon after the question mark ends the then-text. If a text has an opening
/// parenthesis but no conditional, the debug trace says what is missing.
std::optional<Conditional> findConditional(std::string_view text);
