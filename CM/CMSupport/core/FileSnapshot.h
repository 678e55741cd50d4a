// Describes a file at one moment, to detect later whether it has changed.
#pragma once

#include "CM/platform/CString.h"

#include <cstddef>

struct FileSnapshot {
    bool exists = false;
    std::size_t size = 0;   ///< bytes
    std::size_t digest = 0; ///< hash of the content; detects a change, but not tampering

    bool operator==(const FileSnapshot &other) const = default;
};

/// Reads the file. A file that cannot be read counts as empty.
[[nodiscard]] FileSnapshot snapshotOf(const CString &file);
