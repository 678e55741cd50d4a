#include "orchard/storage/TextCheck.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace orchard {

namespace {

std::string byteText(unsigned char byte) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "0x%02X", byte);
    return text.data();
}

bool isControl(unsigned char byte) { return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r'; }

/// Checks eight bytes at a time: whether all are ASCII and none is below a blank, except "\t", "
/// " and "\r".
bool isPlainWord(std::uint64_t word) {
    constexpr std::uint64_t ones = 0x0101'0101'0101'0101U;
    constexpr std::uint64_t highs = ones << 7U;
    // The high bit of each result byte is set unless the byte, which must be ASCII, is below the limit.
    const auto below = [](std::uint64_t bytes, std::uint64_t limit) { return (highs | bytes) - ones * limit; };
    const std::uint64_t notBelow = below(word, 0x20);
    const auto differs = [&](std::uint64_t byte) { return below(word ^ (ones * byte), 1); };
    return ((word | (~notBelow & differs('\t') & differs('\n') & differs('\r'))) & highs) == 0;
}

/// Whether nothing needs a check byte by byte: no control characters, no bytes above ASCII.
bool isPlain(std::string_view text) {
    bool plain = true;
    std::size_t at = 0;
    for (; at + sizeof(std::uint64_t) <= text.size() && plain; at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at, sizeof word);
        plain = isPlainWord(word);
    }
    return plain && std::ranges::none_of(text.substr(at), [](char character) {
               const auto byte = static_cast<unsigned char>(character);
               return byte >= 0x80 || isControl(byte);
           });
}

/// The length of the UTF-8 sequence at the start of the text, or 0.
std::size_t sequenceLength(std::string_view text) {
    const auto at = [&](std::size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : static_cast<unsigned char>(0);
    };
    const auto follows = [&](std::size_t index) { return (at(index) & 0xC0U) == 0x80U; };
    const unsigned char lead = at(0);
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return follows(1) ? 2 : 0;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        const bool overlong = lead == 0xE0 && at(1) < 0xA0;
        const bool surrogate = lead == 0xED && at(1) >= 0xA0;
        return follows(1) && follows(2) && !overlong && !surrogate ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const bool overlong = lead == 0xF0 && at(1) < 0x90;
        const bool beyond = lead == 0xF4 && at(1) >= 0x90;
        return follows(1) && follows(2) && follows(3) && !overlong && !beyond ? 4 : 0;
    }
    return 0;
}

std::optional<Fault> firstByteFault(std::string_view text, std::size_t from) {
    if (isPlain(text.substr(from))) {
        return std::nullopt;
    }
    for (std::size_t at = from; at < text.size();) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (isControl(byte)) {
            return Fault{at, "the control character " + byteText(byte) + " can't stand in a unit file"};
        }
        const std::size_t length = sequenceLength(text.substr(at));
        if (length == 0) {
            return Fault{at, "the byte " + byteText(byte) + " is no UTF-8; unit files are UTF-8 text"};
        }
        at += length;
    }
    return std::nullopt;
}

bool isXmlCharacter(std::uint32_t code) {
    return code == 9 || code == 10 || code == 13 || (code >= 0x20 && code < 0xD800) ||
           (code >= 0xE000 && code <= 0x10FFFF && code != 0xFFFE && code != 0xFFFF);
}

bool isKnownReference(std::string_view name) {
    constexpr std::array<std::string_view, 5> own{"amp", "lt", "gt", "quot", "apos"};
    if (std::ranges::find(own, name) != own.end()) {
        return true;
    }
    if (name.size() < 2 || name.front() != '#') {
        return false;
    }
    const bool hexadecimal = name[1] == 'x';
    const std::string_view digits = name.substr(hexadecimal ? 2 : 1);
    std::uint32_t code = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), code, hexadecimal ? 16 : 10);
    return error == std::errc() && end == digits.data() + digits.size() && isXmlCharacter(code);
}

} // namespace

std::optional<Fault> firstTextFault(std::string_view text, std::size_t from) {
    if (auto fault = firstByteFault(text, from)) {
        return fault;
    }
    for (std::size_t at = text.find('&', from); at != std::string_view::npos; at = text.find('&', at + 1)) {
        const std::string_view rest = text.substr(at + 1, 12);
        const std::size_t end = rest.find(';');
        if (end == std::string_view::npos || !isKnownReference(rest.substr(0, end))) {
            return Fault{at, "\"&\" begins no known reference; expected &amp;, &lt;, &gt;, &quot;, &apos; or the "
                             "number of a character"};
        }
    }
    return std::nullopt;
}

std::optional<std::string> faultOfValue(std::string_view value) {
    const auto fault = firstByteFault(value, 0);
    return fault ? std::optional(fault->text) : std::nullopt;
}

} // namespace orchard
