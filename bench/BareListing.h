// The matches that turning a listing into items takes, by the regular expression engine alone.
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

/// Each ended by a NUL, for the peer.
void writePatterns(const ListingPatterns &patterns, const std::filesystem::path &file);

/// Machine code, one match data for all, the text in memory.
class BareListing {
  public:
    BareListing(const ListingPatterns &patterns, const std::filesystem::path &listing);
    ~BareListing();
    BareListing(const BareListing &) = delete;
    BareListing &operator=(const BareListing &) = delete;

    /// Cuts the text with the delimiter and matches each field's pattern against each record; the seconds that it
    /// took.
    [[nodiscard]] double match() const;
    [[nodiscard]] const std::string &text() const { return text_; }

  private:
    struct Codes;
    std::unique_ptr<Codes> codes_;
    std::string text_;
};

} // namespace bench
