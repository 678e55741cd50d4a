// The pieces of the REGEDIT4 text form that stand for themselves: encodings and the data of values.
#pragma once

#include "CM/platform/Registry.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// UTF-16 in little-endian order as UTF-8. A lone half of a pair becomes U+FFFD, an odd byte at the end is left
/// out.
std::string fromUtf16(std::string_view bytes);

/// The value that "hex(KIND):" with these bytes stands for: texts (1, 2) and numbers (4, 5) as such, all else
/// as bytes. `wide` says that texts are UTF-16. No value if the bytes don't make a number.
std::optional<RegistryValue> valueOfBytes(unsigned kind, std::vector<unsigned char> bytes, bool wide);

/// The value of a hexadecimal digit, or none.
std::optional<unsigned> hexDigit(char character);

} // namespace platform
