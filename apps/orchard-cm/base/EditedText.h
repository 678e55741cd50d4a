// Prepares the text of a comment for an editor, and cleans up what the editor returns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orchard_cm {

/// Returns the editor's initial text: an empty line, and comment lines that name the units and what is to be
/// `done` to them ("checked in"). Comment lines begin with '#'.
std::string remarksFor(std::string_view done, const std::vector<std::string> &names);
/// Returns the text without its remark lines.
std::string withoutRemarks(std::string_view text);
/// Returns the text with line ends as "\n", without blanks at the ends of its lines, and without empty lines at
/// its beginning and end.
std::string tidied(std::string_view text);

} // namespace orchard_cm
