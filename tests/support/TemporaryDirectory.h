// Provides a directory for one test, removed with its contents at the end; reads and writes complete files.
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
    explicit TemporaryDirectory(const std::filesystem::path &parent = std::filesystem::temp_directory_path()) {
        std::string name = (parent / "orchard-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary directory in " + parent.string());
        }
        path_ = std::filesystem::canonical(name);
    }
    /// Removes the directory with its contents, even if a test has removed its own permissions.
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory &) = delete;
    TemporaryDirectory &operator=(const TemporaryDirectory &) = delete;

    [[nodiscard]] std::string path() const { return path_.string(); }
    /// Returns the path of a name in the directory; creates nothing.
    [[nodiscard]] std::string operator/(std::string_view name) const { return (path_ / name).string(); }
    /// Writes a file below the directory and creates its parent directories; returns its path.
    std::string write(std::string_view name, std::string_view contents) const {
        const auto file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << contents;
        return file.string();
    }

  private:
    std::filesystem::path path_;
};

/// Returns the contents of a file; the empty text if it can't be read.
inline std::string contentsOf(const std::string &path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace support
