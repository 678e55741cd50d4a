// Where the registry says that the provider library is.
#pragma once

#include "CM/platform/CString.h"

#include <optional>

namespace provider {

/// The full path of the provider library that is registered for this machine, or none if a key or a value is
/// missing, of another type than text, or names a file that doesn't exist. What is wrong with the registry itself
/// goes to the log.
std::optional<CString> findLibrary();

/// Puts `argument` in place of the first "%s" of a format and "%" in place of each "%%". All else stands as it is:
/// the format comes from the registry, and no text there may reach for arguments that were not given.
CString formatOneArgument(std::string_view format, std::string_view argument);

} // namespace provider
