// The REGEDIT4 text form of the registry:
//
//   REGEDIT4                       or: Windows Registry Editor Version 5.00
//   ; comment
//   [KEY]
//   "name"="text"                  \\ and \" mean a backslash and a quote
//   @="text"                       @ is the default value
//   "name"=hex(2):61,00,\          the bytes of a text that may be expanded; of any other text: hex(1). A
//   backslash at the
//     62,00                        end continues them on the next line
#include "CM/platform/Registry.h"

#include <algorithm>
#include <charconv>

namespace platform {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view wideByteOrderMark = "\xFF\xFE";
constexpr std::string_view blanks = " \t";

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

/// UTF-16 in little-endian order as UTF-8. A lone half of a pair becomes U+FFFD, an odd byte at the end is left
/// out.
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

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

/// Takes a text in quotes off the front; none if it is broken.
std::optional<std::string> takeQuoted(std::string_view &line) {
    std::string text;
    for (std::size_t at = 1; at < line.size(); ++at) {
        if (line[at] == '"') {
            line.remove_prefix(at + 1);
            return text;
        }
        if (line[at] == '\\' && (++at == line.size() || (line[at] != '\\' && line[at] != '"'))) {
            break;
        }
        text += line[at];
    }
    return std::nullopt;
}

} // namespace

class RegistryParser {
  public:
    RegistryParser(std::string_view text, const CString &name, const Registry::Report &report)
        : rest_(text), name_(name), report_(report) {}

    Registry parse() {
        nextLine();
        isWide_ = line_ == "Windows Registry Editor Version 5.00";
        if (!isWide_ && line_ != "REGEDIT4") {
            fail("this is not a registry file: its first line must be \"REGEDIT4\"");
            return {};
        }
        while (nextLine()) {
            if (line_.starts_with('[')) {
                keyLine();
            } else if (key_ != nullptr && (line_.starts_with('"') || line_.starts_with('@'))) {
                valueLine();
            }
        }
        return std::move(registry_);
    }

  private:
    /// The next line without the blanks around it.
    bool nextLine() {
        ++lineNumber_;
        const bool isThere = !rest_.empty();
        const auto end = std::min(rest_.find('\n'), rest_.size());
        line_ = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        line_ = trimmed(line_.substr(0, line_.size() - (line_.ends_with('\r') ? 1 : 0)));
        return isThere;
    }

    /// The values after a key that is broken or removed belong to no key.
    void keyLine() {
        key_ = nullptr;
        const auto close = line_.rfind(']'); // a key's name may contain brackets
        if (close == std::string_view::npos) {
            fail("the key has no closing bracket");
        } else if (!line_.starts_with("[-")) {
            CString key(line_.substr(1, close - 1));
            key_ = &registry_.keys_[Registry::folded(key.TrimRight("\\"))];
        }
    }

    void valueLine() {
        const auto name = line_.front() == '@' ? std::optional(std::string()) : takeQuoted(line_);
        const auto equals = line_.find('=');
        if (!name || equals == std::string_view::npos) {
            fail("expected NAME=VALUE with the name in quotes");
            return;
        }
        line_ = trimmed(line_.substr(equals + 1));
        const std::string place = Registry::folded({*name});
        key_->erase(place); // what is written last counts, even if it is not a text
        if (auto text = textOfValue()) {
            key_->emplace(place, Registry::Value{{*name}, std::move(*text)});
        }
    }

    std::optional<RegistryText> textOfValue() {
        if (line_.starts_with('"')) {
            const auto text = takeQuoted(line_);
            if (!text) {
                fail("the text has no closing quote, or a backslash that isn't written twice");
                return std::nullopt;
            }
            return RegistryText{{*text}, false};
        }
        const bool isExpandable = line_.starts_with("hex(2):");
        if (!isExpandable && !line_.starts_with("hex(1):")) {
            return std::nullopt;
        }
        line_.remove_prefix(std::string_view("hex(1):").size());
        auto text = bytes();
        if (!text) {
            return std::nullopt;
        }
        text = isWide_ ? fromUtf16(*text) : *text;
        return RegistryText{{text->substr(0, text->find('\0'))},
                            isExpandable}; // the closing NUL is not part of it
    }

    std::optional<std::string> bytes() {
        std::string bytes;
        while (!line_.empty() && line_.front() != ';') {
            unsigned char byte = 0;
            const char *const end = line_.data() + std::min<std::size_t>(line_.size(), 2);
            if (const auto [after, error] = std::from_chars(line_.data(), end, byte, 16); error == std::errc()) {
                bytes += static_cast<char>(byte);
                line_.remove_prefix(static_cast<std::size_t>(after - line_.data()));
            } else if (line_ == "\\") {
                nextLine();
            } else if (line_.front() == ',' || blanks.find(line_.front()) != std::string_view::npos) {
                line_.remove_prefix(1);
            } else {
                fail("expected bytes of two hexadecimal digits, separated by commas");
                return std::nullopt;
            }
        }
        return bytes;
    }

    void fail(std::string_view reason) {
        CString place;
        place.Format(":%d: ", lineNumber_);
        report_(name_ + place + reason);
    }

    std::string_view rest_;
    std::string_view line_;
    int lineNumber_ = 0;
    CString name_;
    const Registry::Report &report_;
    bool isWide_ = false; ///< texts given as bytes are UTF-16
    Registry registry_;
    Registry::Key *key_ = nullptr; ///< of the values that follow
};

Registry Registry::parse(std::string_view text, const CString &name, const Report &report) {
    if (text.starts_with(wideByteOrderMark)) {
        const std::string narrow = fromUtf16(text.substr(wideByteOrderMark.size()));
        return RegistryParser(narrow, name, report).parse();
    }
    text.remove_prefix(text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
    return RegistryParser(text, name, report).parse();
}

} // namespace platform
