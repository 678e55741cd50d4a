// Reads the header of a file without the rest of the file.
#pragma once

#include <string>

namespace orchard {

/// A header read from a file, or the reason why there is none.
struct HeaderRead {
    std::string text;
    std::string fault; ///< a clause to be appended to a message; empty if all went well
};
/// Reads no more of the file than is needed for its header, which may be up to 1 MiB.
[[nodiscard]] HeaderRead readHeaderOf(const std::string &path);
/// The same for a file of any kind that is not read into the model: returns the complete lines in its first 2048
/// bytes, where keywords are expected, or nothing if these bytes are binary.
[[nodiscard]] HeaderRead readFirstLinesOf(const std::string &path);

} // namespace orchard
