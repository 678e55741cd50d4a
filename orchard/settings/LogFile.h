// The log: lines of the host's channels in a file that the program names. Off as long as it names none.
#pragma once

#include "orchard/OrchardApi.h"

#include <filesystem>
#include <functional>
#include <string_view>

namespace orchard {

/// Appends to this file from now on, making it if need be; an empty path turns the log off. False if the file
/// can't be opened: the log is off then.
ORCHARD_API bool setLogFile(const std::filesystem::path &file);

/// Also hands each text that is logged to `listener`, which may be empty.
ORCHARD_API void setLogListener(std::function<void(std::string_view text)> listener);

} // namespace orchard
