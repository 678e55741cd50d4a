#include "orchard/model/Paths.h"

#include "CM/platform/Quotable.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace orchard {

namespace {

constexpr std::size_t longestName = 255;
constexpr auto tooLong = "it is longer than 255 bytes";

/// The parts of the path, without empty ones and ".", with ".." resolved.
std::vector<std::string_view> partsOf(std::string_view path) {
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of(platform::separators), path.size());
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (part == "..") {
            if (!parts.empty()) {
                parts.pop_back();
            }
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
    }
    return parts;
}

std::string faultOfQuoting(std::string_view path) {
    using Kind = platform::Unquotable::Kind;
    const auto found = platform::findUnquotable(path);
    if (!found) {
        return {};
    }
    switch (found->kind) {
    case Kind::character:
        return std::string("it contains the character ") + found->character + ", which a command line can't quote";
    case Kind::controlCharacter: {
        char text[64];
        std::snprintf(text, sizeof text, "it contains the control character 0x%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(found->character)));
        return text;
    }
    case Kind::conditional:
        return "it contains a \"(\", a \"?\" and a \")\", which a command template could take for a condition";
    case Kind::backslashAtEnd:
        break;
    }
    return "it ends in a backslash, which would escape the closing quote in a command line";
}

} // namespace

std::string normalPath(std::string_view path, std::string_view base) {
    std::string joined;
    if (!isAbsolutePath(path)) {
        joined = base;
        joined += '/';
    }
    joined += path;
    const bool drive = joined.size() >= 2 && joined[1] == ':';
    std::string normal;
    normal.reserve(joined.size());
    for (const std::string_view part : partsOf(joined)) {
        if (!drive || !normal.empty()) {
            normal += '/';
        }
        normal += part;
    }
    return normal.empty() ? "/" : normal;
}

bool liesIn(std::string_view path, std::string_view directory) {
    return path.size() > directory.size() && path.starts_with(directory) &&
           (directory.ends_with('/') || path[directory.size()] == '/');
}

std::string_view extensionOf(std::string_view path) {
    const std::string_view file = fileOfPath(path);
    const std::size_t at = file.rfind('.');
    return at == std::string_view::npos || at == 0 ? std::string_view() : file.substr(at);
}

std::string relativePath(std::string_view path, std::string_view directory) {
    if (liesIn(path, directory)) {
        return std::string(path.substr(directory.size() + (directory.ends_with('/') ? 0 : 1)));
    }
    const auto parts = partsOf(path);
    const auto from = partsOf(directory);
    std::size_t common = 0;
    while (common < parts.size() && common < from.size() && parts[common] == from[common]) {
        ++common;
    }
    std::string relative;
    for (std::size_t at = common; at < from.size(); ++at) {
        relative += relative.empty() ? ".." : "/..";
    }
    for (std::size_t at = common; at < parts.size(); ++at) {
        relative += relative.empty() ? "" : "/";
        relative += parts[at];
    }
    return relative.empty() ? "." : relative;
}

std::string faultOfFileName(std::string_view name) {
    if (name.empty() || name == "." || name == "..") {
        return "it is not a file name";
    }
    if (name.size() > longestName) {
        return tooLong;
    }
    if (hasSeparator(name)) {
        return "it contains a separator; a file outside its owner's directory must be marked as external";
    }
    return faultOfQuoting(name);
}

std::string faultOfPath(std::string_view path) {
    const auto isTooLong = [](std::string_view part) { return part.size() > longestName; };
    return std::ranges::any_of(partsOf(path), isTooLong) ? tooLong : faultOfQuoting(path);
}

std::string faultOfDirectory(std::string_view directory) {
    if (isAbsolutePath(directory)) {
        return "expected one below that of the owner";
    }
    while (!directory.empty()) {
        const std::size_t end = std::min(directory.find_first_of(platform::separators), directory.size());
        if (std::string fault = faultOfFileName(directory.substr(0, end)); !fault.empty()) {
            return fault;
        }
        directory.remove_prefix(std::min(end + 1, directory.size()));
    }
    return {};
}

} // namespace orchard
