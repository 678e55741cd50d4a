#include "CM/platform/PathText.h"

namespace platform {

namespace {

constexpr bool isDriveLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

} // namespace

bool isAbsolutePath(std::string_view path) {
    const bool hasDrive = path.size() >= 3 && isDriveLetter(path[0]) && path[1] == ':' && isSeparator(path[2]);
    return hasDrive || (!path.empty() && isSeparator(path.front()));
}

std::string_view directoryOfPath(std::string_view path) {
    const auto last = path.find_last_of(separators);
    return last == path.npos ? std::string_view() : path.substr(0, last);
}

std::string_view fileOfPath(std::string_view path) { return path.substr(path.find_last_of(separators) + 1); }

} // namespace platform
