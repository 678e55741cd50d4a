// Writes the host's log to a file. Logging is off until a file is set.
#pragma once

#include "orchard/OrchardApi.h"

#include <filesystem>
#include <functional>
#include <string_view>

namespace orchard {

/// Appends to this file from now on, creating it if needed; an empty path turns the log off. Returns false, with
/// the log off, if the file can't be opened.
ORCHARD_API bool setLogFile(const std::filesystem::path &file);

/// Also passes each logged text to `listener`, which may be empty.
ORCHARD_API void setLogListener(std::function<void(std::string_view text)> listener);

} // namespace orchard
