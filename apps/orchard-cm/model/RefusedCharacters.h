// Decides which user-supplied texts may become part of a tool's command line.
#pragma once

#include <string>
#include <string_view>

namespace orchard_cm {

/// The characters that are refused if the tool's property set doesn't list any. Wherever a template puts the text,
/// they could end a quote, be expanded, redirect output or begin another command.
inline constexpr std::string_view shellCharacters = "\"'$`\\;&|<>()";

/// Keys of a tool that only this program reads.
inline constexpr auto refusedInLabelKey = "RefusedInLabel";
inline constexpr auto refusedInLogKey = "RefusedInLog";

/// Returns the value of the tool's property with one of these keys, or shellCharacters if there is none.
std::string refusedInLabel();
std::string refusedInLog();

/// Returns why the label is unsafe in a command line, naming the character; empty for a safe label. The empty
/// label is safe, and so is a label with blanks.
std::string labelFault(std::string_view label, std::string_view refused = shellCharacters);
/// Does the same for a comment, which may contain line ends and tabs and begin with any character.
std::string commentFault(std::string_view comment, std::string_view refused = shellCharacters);

} // namespace orchard_cm
