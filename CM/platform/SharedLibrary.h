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

    /// Loads the library at `path`, with its own symbols kept to itself, in place of one loaded before. All that
    /// it needs must be there at once. A name without a separator is looked for as the system's loader does. On
    /// failure false, and `error` tells why.
    bool load(const CString &path, CString &error);
    /// Addresses that entry() gave are dead from here on. Nothing happens without a loaded library.
    void unload();
    [[nodiscard]] bool isLoaded() const { return handle_ != nullptr; }
    /// The address of an exported entry; null if there is none of that name, or no library is loaded.
    [[nodiscard]] void *entry(const char *name) const;

  private:
    void *handle_ = nullptr;
};

} // namespace platform
