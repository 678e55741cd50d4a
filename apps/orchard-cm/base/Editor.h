// Editor: the user's own one, on the terminal.
#pragma once

#include <string>

namespace orchard_cm {

/// Lets the user edit the text in $VISUAL, or else $EDITOR, and gives back what came of it, without remarks (lines
/// that begin with '#'). Throws a Failure where there is no terminal or no editor, or where the editor failed.
std::string edit(const std::string &text);

} // namespace orchard_cm
