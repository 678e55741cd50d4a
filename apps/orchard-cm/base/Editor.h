// Runs the user's own editor on the terminal.
#pragma once

#include <string>

namespace orchard_cm {

/// Lets the user edit the text in $VISUAL, or else $EDITOR, and returns the result without remarks (lines that
/// begin with '#'). Throws a Failure if there is no terminal or no editor, or if the editor fails.
std::string edit(const std::string &text);

} // namespace orchard_cm
