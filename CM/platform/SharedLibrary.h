// Loads a shared library at run time.
#pragma once

#include "CM/platform/CString.h"

namespace platform {

/// Owns one loaded library, which the destructor unloads.
class SharedLibrary {
  public:
    SharedLibrary() = default;
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary &) = delete;
    SharedLibrary &operator=(const SharedLibrary &) = delete;
    SharedLibrary(SharedLibrary &&other) noexcept;
    SharedLibrary &operator=(SharedLibrary &&other) noexcept;

    /// Loads the library at `path` with private symbols, after unloading the previous one. Fails if a library that
    /// it depends on is missing. A name without a separator is searched for by the system's loader. On failure
    /// returns false and sets `error` to the reason.
    bool load(const CString &path, CString &error);
    /// Invalidates all addresses from entry(). Does nothing without a loaded library.
    void unload();
    [[nodiscard]] bool isLoaded() const { return handle_ != nullptr; }
    /// The address of an exported entry; null if there is none, or if no library is loaded.
    [[nodiscard]] void *entry(const char *name) const;

  private:
    void *handle_ = nullptr;
};

} // namespace platform
