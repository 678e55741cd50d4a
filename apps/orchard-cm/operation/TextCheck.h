// Which texts of the user may go into the command line of a tool.
#pragma once

#include <string>
#include <string_view>

namespace orchard_cm {

/// What a text must not hold where the tool's property set does not say it: nothing may end a quote, be expanded,
/// be redirected or begin another command, wherever a template puts the text.
inline constexpr std::string_view shellCharacters = "\"'$`\\;&|<>()";
/// What no template can quote in a path.
inline constexpr std::string_view unquotableCharacters = "\"$`\\>";

/// Why the label could do something else than name a version when it stands in a command line, with the character
/// in question; empty for a label that is safe. Safe is also the empty label, and one with blanks.
std::string labelFault(std::string_view label, std::string_view refused = shellCharacters);
/// The same for a comment, which may hold line ends and tabs and begin with any character.
std::string commentFault(std::string_view comment, std::string_view refused = shellCharacters);
/// The same for a path; what a template would take for a conditional is refused, too. A relative path has to be made
/// a full one first: the directory that it starts from comes along into the command.
std::string pathFault(std::string_view path);

} // namespace orchard_cm
