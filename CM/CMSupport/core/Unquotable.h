// What no command template can quote. A name may come from the archive's listing, from a model file or from a file
// that somebody put on the disk; quoted with "" in a template it must stay one word of the command.
#pragma once

#include "CM/platform/CString.h"

#include <string>
#include <string_view>

namespace paths {

/// What a path, or a part of one, holds that can't be quoted: a double quote, a dollar, a backquote, a ">" (which
/// redirects the output wherever it stands), a control character, a conditional of templates, of which only a part
/// would be left, or a backslash at its end, which would take the closing quote for itself. In words for the user,
/// as they follow "it holds"; empty if the path is fine. A backslash elsewhere is a separator.
[[nodiscard]] std::string unquotableIn(std::string_view path);

/// The path as it is shown where it can't be trusted: "?" in the place of each control character.
[[nodiscard]] std::string shownPath(std::string_view path);

} // namespace paths
