// Reads a complete file with few system calls, and names places in its text.
#pragma once

#include "orchard/model/FileState.h"
#include "orchard/storage/Problem.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orchard {

/// Larger unit files are refused.
constexpr std::size_t largestUnitFile = std::size_t{64} << 20U;

/// A regular file, read from its start.
class OpenFile {
  public:
    /// Check fault() afterwards. Anything but a regular file is refused, without blocking.
    explicit OpenFile(const std::string &path);
    ~OpenFile();
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    [[nodiscard]] bool isMissing() const { return isMissing_; }
    /// Returns why nothing can be read, as a clause to be appended to a message; empty while there is no error.
    [[nodiscard]] const std::string &fault() const { return fault_; }
    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] bool isReadOnly() const { return readOnly_; }
    [[nodiscard]] const FileState &state() const { return state_; }
    /// Continues reading until `text`, which must contain what was read before, has `bytes` bytes. Returns true if
    /// the end of the file was reached by then.
    [[nodiscard]] bool readUpTo(std::size_t bytes, std::string &text);

  private:
    void failed();

    int fd_ = -1;
    bool isMissing_ = false;
    bool readOnly_ = false;
    std::size_t size_ = 0;
    FileState state_;
    std::string fault_;
};

enum class FileRead { done, missing, failed };

struct FileText {
    std::string text; ///< kept between reads, so that its memory is reused
    bool readOnly = false;
    FileState state;   ///< just before the text was read
    std::string fault; ///< why nothing was read

    /// Reads a regular file of at most `limit` bytes.
    FileRead read(const std::string &path, std::size_t limit = largestUnitFile);
};

/// A fault at a place in a text.
struct Fault {
    std::size_t offset = 0;
    std::string text;
};

/// Makes a problem of the fault; line and column are computed from the complete text of the file.
[[nodiscard]] Problem problemAt(const std::string &file, std::string_view text, const Fault &fault);

} // namespace orchard
