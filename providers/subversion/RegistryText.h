// Reads one key of a registry in the text form that registry editors export.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace svnscc {

/// The texts of `key` by their names in lower case, from the contents of a registry file: UTF-8, or UTF-16 in
/// little-endian order with its mark. Names compare without regard to the case of ASCII letters. Values that are
/// no texts, and lines that can't be read, are ignored; so is a file without the first line of a registry.
std::map<std::string, std::string> textsOfKey(std::string_view contents, std::string_view key);

} // namespace svnscc
