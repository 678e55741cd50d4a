// The header of a unit file: the comment in front of its root element, in which a CM tool's keywords expand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orchard {

struct UnitHeader {
    std::string_view text; ///< without the comment's marks and the line ends next to them; empty without one
    std::size_t end = 0;   ///< where in the file what is no header begins
};

/// Finds the header in the text of a unit file. A text with a comment that does not end has none.
[[nodiscard]] UnitHeader findHeader(std::string_view text);

/// Tells what files hold behind their headers apart; line ends of either sort are alike. Never 0.
[[nodiscard]] std::uint64_t bodyHashOf(std::string_view text);

/// The header of a file; nothing if the file can't be read.
[[nodiscard]] std::optional<std::string> readHeaderOf(const std::string &path);

} // namespace orchard
