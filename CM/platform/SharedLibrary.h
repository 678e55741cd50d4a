// A shared library that is loaded at run time.
#pragma once

#include "CM/platform/CString.h"

namespace platform {

/// Owns one loaded library; unloads it at the end of its life.
class SharedLibrary {
  public:
    SharedLibrary() = default;
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary &) = delete;
    SharedLibrary &operator=(const SharedLibrary &) = delete;
    SharedLibrary(SharedLibrary &&other) noexcept;
    SharedLibrary &operator=(SharedLibrary &&other) noexcept;

    /// Loads the library at `path`, with its own symbols kept to itself. On failure false, and `error` tells why.
    bool load(const CString &path, CString &error);
    void unload();
    [[nodiscard]] bool isLoaded() const { return handle_ != nullptr; }
    /// The address of an exported entry, or null.
    [[nodiscard]] void *entry(const char *name) const;

  private:
    void *handle_ = nullptr;
};

} // namespace platform
