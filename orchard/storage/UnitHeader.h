// The header of a unit file: the comment in front of its root element, in which a CM tool's keywords expand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orchard {

struct UnitHeader {
    std::string_view text; ///< without the comment's marks and the line ends next to them; empty without one
    std::size_t end = 0;   ///< where in the file what is no header begins
};

/// Finds the header in the text of a unit file. A text with a comment that does not end has none.
[[nodiscard]] UnitHeader findHeader(std::string_view text);

/// What the first part of a file tells of its header.
struct HeaderScan {
    enum State {
        found,   ///< `text` is the header, perhaps an empty one, and a unit's root element follows
        tooFew,  ///< more of the file is needed
        foreign, ///< this is no unit file, or only a piece of one; `fault` says why, in words that end a sentence
    };
    State state = foreign;
    std::string_view text;
    const char *fault = "";
};
/// `isWhole` tells that there is no more. However much of a file is given, the answer is that for all of it, or
/// tooFew.
[[nodiscard]] HeaderScan scanHeader(std::string_view part, bool isWhole);

/// Tells what files hold behind their headers apart; line ends of either sort are alike. Never 0.
[[nodiscard]] std::uint64_t bodyHashOf(std::string_view text);

/// A header that was read from a file, or why it was not.
struct HeaderRead {
    std::string text;
    std::string fault; ///< in words that end a sentence; empty if all went well
};
/// Reads no more of the file than its header takes, which may be up to 1 MiB.
[[nodiscard]] HeaderRead readHeaderOf(const std::string &path);
/// The same for a file that is not read into the model and may be of any kind: the whole lines among its first
/// 2048 bytes, where keywords stand, or nothing for one that holds bytes that no text has.
[[nodiscard]] HeaderRead readFirstLinesOf(const std::string &path);

} // namespace orchard
