#include "providers/subversion/RegistryText.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace svnscc {

namespace {

std::string lowered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    return result;
}

void appendUtf8(std::string &text, char32_t c) {
    if (c < 0x80) {
        text += static_cast<char>(c);
        return;
    }
    const int following = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    constexpr unsigned lead[] = {0, 0xC0, 0xE0, 0xF0};
    text += static_cast<char>(lead[following] | (c >> (6 * following)));
    for (int i = following - 1; i >= 0; --i) {
        text += static_cast<char>(0x80U | ((c >> (6 * i)) & 0x3FU));
    }
}

/// UTF-16 in little-endian order as UTF-8. A surrogate without its partner becomes U+FFFD.
std::string fromUtf16(std::string_view bytes) {
    std::string text;
    const auto unit = [&](std::size_t i) {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[i]) |
                                     (static_cast<unsigned char>(bytes[i + 1]) << 8U));
    };
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t c = unit(i);
        if (c >= 0xD800 && c < 0xE000) {
            const char32_t next = i + 3 < bytes.size() ? unit(i + 2) : 0;
            if (c < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
                c = 0x10000 + ((c - 0xD800) << 10U) + (next - 0xDC00);
                i += 2;
            } else {
                c = 0xFFFD;
            }
        }
        appendUtf8(text, c);
    }
    return text;
}

std::string decoded(std::string_view contents) {
    if (contents.substr(0, 2) == "\xFF\xFE") {
        return fromUtf16(contents.substr(2));
    }
    return std::string(contents.substr(0, 3) == "\xEF\xBB\xBF" ? contents.substr(3) : contents);
}

/// Takes a text in double quotes, with a backslash before each quote and backslash, off the front of `line`.
std::optional<std::string> takeQuoted(std::string_view &line) {
    if (line.empty() || line.front() != '"') {
        return std::nullopt;
    }
    std::string text;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (line[i] == '"') {
            line.remove_prefix(i + 1);
            return text;
        }
        if (line[i] == '\\' && ++i == line.size()) {
            break;
        }
        text += line[i];
    }
    return std::nullopt;
}

std::string_view nextLine(std::string_view &rest) {
    const std::size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t')) {
        line.remove_suffix(1);
    }
    return line;
}

} // namespace

std::map<std::string, std::string> textsOfKey(std::string_view contents, std::string_view key) {
    std::map<std::string, std::string> texts;
    const std::string text = decoded(contents);
    std::string_view rest = text;
    if (const std::string_view first = nextLine(rest);
        first != "REGEDIT4" && first != "Windows Registry Editor Version 5.00") {
        return texts;
    }
    const std::string heading = "[" + lowered(key) + "]";
    bool isInKey = false;
    while (!rest.empty()) {
        std::string_view line = nextLine(rest);
        if (!line.empty() && line.front() == '[') {
            isInKey = lowered(line) == heading;
            continue;
        }
        if (!isInKey) {
            continue;
        }
        const auto name = takeQuoted(line);
        if (!name || line.empty() || line.front() != '=') {
            continue;
        }
        line.remove_prefix(1);
        if (auto value = takeQuoted(line); value && line.empty()) {
            texts[lowered(*name)] = std::move(*value);
        }
    }
    return texts;
}

} // namespace svnscc
