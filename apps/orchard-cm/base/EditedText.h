// The text of a comment as it goes to and comes from an editor.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orchard_cm {

/// What the editor shows at first: an empty line, and remarks that tell what is to be `done` ("checked in") with
/// which units. Remarks begin with '#'.
std::string remarksFor(std::string_view done, const std::vector<std::string> &names);
/// The text without its remark lines.
std::string withoutRemarks(std::string_view text);
/// The text with line ends as "\n", without blanks at the ends of its lines, and without empty lines at either
/// end.
std::string tidied(std::string_view text);

} // namespace orchard_cm
