#include "orchard/model/Paths.h"

#include <algorithm>

#include <cstdio>
#include <vector>

namespace orchard {

namespace {

enum class Dots { resolved, kept };

/// The parts without empty ones and ".".
std::vector<std::string_view> partsOf(std::string_view path, Dots dots = Dots::resolved) {
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of("/\\"), path.size());
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (part == ".." && dots == Dots::resolved) {
            if (!parts.empty()) {
                parts.pop_back();
            }
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
    }
    return parts;
}

} // namespace

bool isAbsolutePath(std::string_view path) {
    if (path.empty()) {
        return false;
    }
    const bool drive = path.size() >= 3 && path[1] == ':' && isSeparator(path[2]);
    return isSeparator(path.front()) || drive;
}

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

std::string_view fileOfPath(std::string_view path) {
    const std::size_t at = path.find_last_of("/\\");
    return at == std::string_view::npos ? path : path.substr(at + 1);
}

std::string_view directoryOfPath(std::string_view path) {
    const std::size_t at = path.find_last_of("/\\");
    return at == std::string_view::npos ? std::string_view() : path.substr(0, at);
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
        return "it is no name of a file";
    }
    if (name.size() > 255) {
        return "it is longer than 255 bytes";
    }
    for (const char character : name) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20 || code == 0x7F) {
            char text[64];
            std::snprintf(text, sizeof text, "it holds the control character 0x%02X", code);
            return text;
        }
        if (character == '/') {
            return "it holds a separator; a file outside its owner's directory has to be marked as external";
        }
        if (std::string_view("\"$`\\>").find(character) != std::string_view::npos) {
            return std::string("it holds the character ") + character + ", which a command line can't quote";
        }
    }
    return {};
}

std::string faultOfPath(std::string_view path) {
    for (const std::string_view part : partsOf(path, Dots::kept)) {
        if (std::string fault = part == ".." ? std::string() : faultOfFileName(part); !fault.empty()) {
            return fault;
        }
    }
    const std::size_t open = path.find('(');
    const std::size_t question = open == std::string_view::npos ? open : path.find('?', open);
    if (question != std::string_view::npos && path.find(')', question) != std::string_view::npos) {
        return "it holds a \"(\", a \"?\" and a \")\" in this order, which a command template takes for a "
               "condition";
    }
    return {};
}

std::string faultOfDirectory(std::string_view directory) {
    if (isAbsolutePath(directory)) {
        return "expected one below that of the owner";
    }
    while (!directory.empty()) {
        const std::size_t end = std::min(directory.find_first_of("/\\"), directory.size());
        if (std::string fault = faultOfFileName(directory.substr(0, end)); !fault.empty()) {
            return fault;
        }
        directory.remove_prefix(std::min(end + 1, directory.size()));
    }
    return {};
}

} // namespace orchard
