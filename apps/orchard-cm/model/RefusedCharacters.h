// Decides which texts of the user may be part of a tool's command line.
#pragma once

#include <string>
#include <string_view>

namespace orchard_cm {

/// Lists what a text must not contain if the tool's property set does not specify it. The text must not end a
/// quote, be expanded, be redirected or begin another command, wherever a template puts it.
inline constexpr std::string_view shellCharacters = "\"'$`\\;&|<>()";

/// Keys of a tool that only this program reads.
inline constexpr auto refusedInLabelKey = "RefusedInLabel";
inline constexpr auto refusedInLogKey = "RefusedInLog";

/// Returns the value of the tool's property with one of these keys, or shellCharacters if there is none.
std::string refusedInLabel();
std::string refusedInLog();

/// Returns why the label, as part of a command line, could do more than name a version, with the character in
/// question; empty for a safe label. The empty label is safe, and so is a label with blanks.
std::string labelFault(std::string_view label, std::string_view refused = shellCharacters);
/// Does the same for a comment, which may contain line ends and tabs and begin with any character.
std::string commentFault(std::string_view comment, std::string_view refused = shellCharacters);

} // namespace orchard_cm
