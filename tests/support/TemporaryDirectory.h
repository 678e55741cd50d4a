// A directory for one test, gone with all that is in it at the end of its life; and whole files in and out.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace support {

class TemporaryDirectory {
  public:
    TemporaryDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "orc-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary directory");
        }
        path_ = name;
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory &) = delete;
    TemporaryDirectory &operator=(const TemporaryDirectory &) = delete;

    [[nodiscard]] std::string path() const { return path_.string(); }
    /// The path of a name in the directory; nothing is made.
    [[nodiscard]] std::string operator/(std::string_view name) const { return (path_ / name).string(); }
    /// Writes a file below the directory, and the directories on the way to it; returns its path.
    std::string write(std::string_view name, std::string_view contents) const {
        const auto file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << contents;
        return file.string();
    }

  private:
    std::filesystem::path path_;
};

/// What a file holds; the empty text if it can't be read.
inline std::string contentsOf(const std::string &path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace support
