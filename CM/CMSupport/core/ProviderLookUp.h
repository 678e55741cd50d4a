// Finds the provider library that the registry names.
#pragma once

#include "CM/platform/CString.h"

#include <optional>

namespace provider {

/// A provider library, as the registry names it.
struct RegisteredLibrary {
    CString path; ///< full path
    CString key;  ///< the key that contains the path
};

/// Returns the provider library that is registered for this machine, or none if a key or value is missing, a value
/// is not a text, the path is not a full one, or the file doesn't exist. Faults of the registry itself are logged.
std::optional<RegisteredLibrary> findLibrary();

/// Replaces the first "%s" of a format with `argument` and each "%%" with "%". Other conversions are plain text,
/// because the format comes from the registry and must not make the function read missing arguments. Test:
/// ProviderLookUp.IsNotHurtByAHostileFormat.
CString formatOneArgument(std::string_view format, std::string_view argument);

} // namespace provider
