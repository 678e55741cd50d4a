// Converts the library's paths to the system's.
#pragma once

#include "CM/platform/CString.h"

#include <algorithm>
#include <string>

namespace platform::posix {

/// Returns the path with '/' as its separator. A path that contains a NUL gives an empty path, which names
/// nothing, since the system would use only the part before the NUL.
inline std::string nativePath(const CString &path) {
    std::string native = path.str();
    if (native.find('\0') != std::string::npos) {
        return {};
    }
    std::ranges::replace(native, '\\', '/');
    return native;
}

} // namespace platform::posix
