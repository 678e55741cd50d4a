// PDLL: holds one shared library that is loaded by its file name.
#pragma once

#include "CM/platform/SharedLibrary.h"

#include <optional>
#include <string>

class PDLL {
  public:
    PDLL() = default;
    virtual ~PDLL() = default; ///< unloads the library, whatever the usage count is
    PDLL(const PDLL &) = delete;
    PDLL &operator=(const PDLL &) = delete;

    /// Counts a user. For the first one, loads the library that SetDllName has named, and returns whether it is
    /// loaded; returns 0 for every other user and without a name.
    virtual int Initialize(short flag);
    /// Counts one user less; after the last one, unloads the library and forgets its name. Does nothing if there
    /// are no users.
    virtual void Uninitialize();

    /// Stores a copy of the name; null means no name. Returns 1, or 0 with nothing changed while a library is
    /// loaded.
    int SetDllName(const char *name);
    /// Loads the library with this name, or with the stored one for null or while a library is loaded. Replaces
    /// the library loaded before, whose entries stay valid. On failure no library is loaded, and loadError() says
    /// why. The usage count does not change. `flag` is not used.
    void LoadDll(const char *name, short flag = 0);

    [[nodiscard]] bool isHeld() const { return library_.isLoaded(); }
    /// Returns why the last load failed; empty if it succeeded, or before the first one.
    [[nodiscard]] const CString &loadError() const { return loadError_; }
    /// Returns the address of an exported entry; null if there is none, or if no library is loaded.
    [[nodiscard]] void *entry(const char *name) const { return library_.entry(name); }

  private:
    platform::SharedLibrary library_;
    std::optional<std::string> name_;
    CString loadError_;
    int users_ = 0;
};
