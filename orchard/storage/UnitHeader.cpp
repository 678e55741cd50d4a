#include "orchard/storage/UnitHeader.h"

#include "orchard/storage/FileText.h"

#include <algorithm>
#include <cstring>

namespace orchard {

UnitHeader findHeader(std::string_view text) {
    const auto skipSpace = [&](std::size_t at) {
        return std::min(text.find_first_not_of(" \t\r\n", at), text.size());
    };
    std::size_t at = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    at = skipSpace(at);
    if (text.substr(at).starts_with("<?xml")) {
        const std::size_t close = text.find("?>", at);
        if (close == std::string_view::npos) {
            return {};
        }
        at = skipSpace(close + 2);
    }
    if (!text.substr(at).starts_with("<!--")) {
        return {{}, at};
    }
    const std::size_t close = text.find("-->", at + 4);
    if (close == std::string_view::npos) {
        return {};
    }
    std::string_view header = text.substr(at + 4, close - at - 4);
    const auto dropLineEnd = [&](bool front) {
        if (front && header.starts_with("\r\n")) {
            header.remove_prefix(2);
        } else if (front && header.starts_with('\n')) {
            header.remove_prefix(1);
        } else if (!front && header.ends_with('\n')) {
            header.remove_suffix(header.ends_with("\r\n") ? 2 : 1);
        }
    };
    dropLineEnd(true);
    dropLineEnd(false);
    return {header, skipSpace(close + 3)};
}

std::uint64_t bodyHashOf(std::string_view text) {
    text.remove_prefix(findHeader(text).end);
    std::string plain;
    if (text.find('\r') != std::string_view::npos) {
        plain = text;
        std::erase(plain, '\r');
        text = plain;
    }
    constexpr std::uint64_t odd = 0x9E3779B97F4A7C15ULL;
    std::uint64_t hash = text.size() * odd;
    while (!text.empty()) {
        std::uint64_t word = 0;
        const std::size_t size = std::min(text.size(), sizeof word);
        std::memcpy(&word, text.data(), size);
        text.remove_prefix(size);
        hash = (hash ^ word) * odd;
        hash ^= hash >> 32U;
    }
    return hash == 0 ? 1 : hash;
}

std::optional<std::string> readHeaderOf(const std::string &path) {
    FileText file;
    if (file.read(path) != FileRead::done) {
        return std::nullopt;
    }
    return std::string(findHeader(file.text).text);
}

} // namespace orchard
