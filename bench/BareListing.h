// Times only the pattern matches that turn a listing into items, with the bare regular expression engine.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

namespace bench {

struct ListingPatterns {
    std::string delimiter;
    std::array<std::string, 4> fields; ///< working file, version, mode, locker
    std::string suffix;                ///< of project files
    std::string projectFile;
};

/// Writes the patterns to the file, each ended by a NUL, for the peer.
void writePatterns(const ListingPatterns &patterns, const std::filesystem::path &file);

/// Matches as fast as the engine can: machine code, one match data block for all matches, and the text in memory.
class BareListing {
  public:
    BareListing(const ListingPatterns &patterns, const std::filesystem::path &listing);
    ~BareListing();
    BareListing(const BareListing &) = delete;
    BareListing &operator=(const BareListing &) = delete;

    /// Splits the text at the delimiter and matches each field's pattern against each record. Returns the seconds
    /// taken.
    [[nodiscard]] double match() const;
    [[nodiscard]] const std::string &text() const { return text_; }

  private:
    struct Codes;
    std::unique_ptr<Codes> codes_;
    std::string text_;
};

} // namespace bench
