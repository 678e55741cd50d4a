#include "CM/platform/RegistryText.h"

namespace platform {

namespace {

constexpr unsigned textKind = 1;
constexpr unsigned expandableTextKind = 2;
constexpr unsigned numberKind = 4;
constexpr unsigned bigEndianNumberKind = 5;
constexpr std::size_t numberSize = 4;

void appendUtf8(std::string &text, unsigned long code) {
    const auto add = [&text](unsigned long byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xC0 | code >> 6U);
        add(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        add(0xE0 | code >> 12U);
        add(0x80 | (code >> 6U & 0x3F));
        add(0x80 | (code & 0x3F));
    } else {
        add(0xF0 | code >> 18U);
        add(0x80 | (code >> 12U & 0x3F));
        add(0x80 | (code >> 6U & 0x3F));
        add(0x80 | (code & 0x3F));
    }
}

} // namespace

std::string fromUtf16(std::string_view bytes) {
    const auto unit = [bytes](std::size_t at) -> unsigned long {
        return static_cast<unsigned char>(bytes[at]) |
               static_cast<unsigned long>(static_cast<unsigned char>(bytes[at + 1])) << 8U;
    };
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        unsigned long code = unit(at);
        if (code >= 0xD800 && code < 0xE000) {
            const bool paired = code < 0xDC00 && at + 3 < bytes.size() && (unit(at + 2) & 0xFC00) == 0xDC00;
            if (paired) {
                at += 2;
                code = 0x10000 + ((code & 0x3FF) << 10U) + (unit(at) & 0x3FF);
            } else {
                code = 0xFFFD;
            }
        }
        appendUtf8(text, code);
    }
    return text;
}

std::optional<RegistryValue> valueOfBytes(unsigned kind, std::vector<unsigned char> bytes, bool wide) {
    RegistryValue value;
    if (kind == textKind || kind == expandableTextKind) {
        std::string text(bytes.begin(), bytes.end());
        if (wide) {
            text = fromUtf16(text);
        }
        value.text = std::string_view(text).substr(0, text.find('\0')); // the closing NUL is not part of it
        return value;
    }
    if (kind == numberKind || kind == bigEndianNumberKind) {
        if (bytes.size() != numberSize) {
            return std::nullopt;
        }
        value.type = RegistryValue::Type::dword;
        for (std::size_t index = 0; index < numberSize; ++index) {
            const auto byte = bytes[kind == numberKind ? numberSize - 1 - index : index];
            value.number = value.number << 8U | byte;
        }
        return value;
    }
    value.type = RegistryValue::Type::binary;
    value.bytes = std::move(bytes);
    return value;
}

std::optional<unsigned> hexDigit(char character) {
    if (character >= '0' && character <= '9') {
        return static_cast<unsigned>(character - '0');
    }
    if (character >= 'a' && character <= 'f') {
        return static_cast<unsigned>(character - 'a' + 10);
    }
    if (character >= 'A' && character <= 'F') {
        return static_cast<unsigned>(character - 'A' + 10);
    }
    return std::nullopt;
}

} // namespace platform
