// Reading a whole file with few system calls, and naming places in its text.
#pragma once

#include "orchard/storage/Problem.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orchard {

/// Larger unit files are refused.
constexpr std::size_t largestUnitFile = std::size_t{64} << 20U;

enum class FileRead { done, missing, failed };

struct FileText {
    std::string text; ///< kept from one read to the next, so that its memory is reused
    bool readOnly = false;
    std::string fault; ///< why reading failed

    /// Reads a regular file of at most `limit` bytes.
    FileRead read(const std::string &path, std::size_t limit = largestUnitFile);
};

/// A fault at a place in a text.
struct Fault {
    std::size_t offset = 0;
    std::string text;
};

/// The fault with line and column worked out from the whole text of the file.
[[nodiscard]] Problem problemAt(const std::string &file, std::string_view text, const Fault &fault);

} // namespace orchard
