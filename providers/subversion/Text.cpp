#include "providers/subversion/Text.h"

#include <svn_xml.h>

#include <algorithm>
#include <array>
#include <ctime>

namespace svnscc {

std::string timeText(apr_time_t time) {
    const auto seconds = static_cast<std::time_t>(apr_time_sec(time));
    std::tm parts{};
    std::array<char, 32> text{};
    if (localtime_r(&seconds, &parts) == nullptr ||
        std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &parts) == 0) {
        return "an unknown time";
    }
    return text.data();
}

std::string commentText(const char *comment) {
    const std::string_view given = comment != nullptr ? comment : "";
    std::string text;
    for (std::size_t i = 0; i < given.size(); ++i) {
        const bool isLineEnd = given[i] == '\r';
        text += isLineEnd ? '\n' : given[i];
        if (isLineEnd && i + 1 < given.size() && given[i + 1] == '\n') {
            ++i;
        }
    }
    const auto isControl = [](char c) {
        return (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') || c == '\x7F';
    };
    std::replace_if(text.begin(), text.end(), isControl, '?');
    if (svn_xml_is_xml_safe(text.data(), text.size()) == 0) {
        std::replace_if(
            text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }, '?');
    }
    return text;
}

bool copyInto(char *buffer, std::size_t size, std::string_view text) {
    if (buffer == nullptr || text.size() >= size) {
        return false;
    }
    buffer[text.copy(buffer, text.size())] = '\0';
    return true;
}

} // namespace svnscc
