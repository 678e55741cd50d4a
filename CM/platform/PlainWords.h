// Splits the commands that need no shell into words.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Returns the words of a command that needs no shell: words, possibly in single or double quotes, without
/// anything that a shell would interpret (expansion, redirection, pipes, lists, globs, assignments, reserved
/// words, a builtin as its first word). Returns no value if a shell is needed, which includes a command without
/// words or with an open quote.
std::optional<std::vector<std::string>> plainWords(std::string_view command);

} // namespace platform
