// Finds the header of a unit file: the comment before its root element, in which a CM tool's keywords expand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orchard {

struct UnitHeader {
    std::string_view
        text; ///< without the comment's delimiters and the line ends next to them; empty if there is none
    std::size_t end = 0; ///< offset of the file's text after the header
};

/// Finds the header in the text of a unit file. A text with an unterminated comment has none.
[[nodiscard]] UnitHeader findHeader(std::string_view text);

/// What the first part of a file shows about its header.
struct HeaderScan {
    enum State {
        found,   ///< `text` is the header, possibly empty, and a unit's root element follows
        tooFew,  ///< more of the file is needed
        foreign, ///< this is not a complete unit file; `fault` says why, as a clause to be appended to a message
    };
    State state = foreign;
    std::string_view text;
    const char *fault = "";
};
/// Scans the first part of a file; `isComplete` means that there is no more. If it is false, the result is the one
/// for the complete file, or tooFew.
[[nodiscard]] HeaderScan scanHeader(std::string_view part, bool isComplete);

/// Hashes the file's contents after the header, to detect changes. Treats both kinds of line end as equal. Never
/// returns 0.
[[nodiscard]] std::uint64_t bodyHashOf(std::string_view text);

} // namespace orchard
