#include "CM/platform/RegistryParser.h"

#include "CM/platform/RegistryText.h"

namespace platform {

namespace {

constexpr int mostReports = 100;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view wideByteOrderMark = "\xFF\xFE";
constexpr std::string_view numberPrefix = "dword:";
constexpr std::string_view bytesPrefix = "hex";

constexpr bool isBlank(char character) { return character == ' ' || character == '\t'; }

} // namespace

Registry Registry::parse(std::string_view text, const CString &name, const Report &report) {
    if (text.starts_with(wideByteOrderMark)) {
        const std::string narrow = fromUtf16(text.substr(wideByteOrderMark.size()));
        return RegistryParser(narrow, name, report).parse();
    }
    text.remove_prefix(text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
    return RegistryParser(text, name, report).parse();
}

Registry RegistryParser::parse() {
    if (headerLine()) {
        while (nextLine()) {
            entryLine();
        }
    }
    if (failures_ > mostReports && report_) {
        CString more;
        more.Format(": %d more lines can't be read", failures_ - mostReports);
        report_(name_ + more);
    }
    return std::move(registry_);
}

bool RegistryParser::nextLine() {
    if (rest_.empty()) {
        return false;
    }
    ++lineNumber_;
    const auto end = rest_.find('\n');
    line_ = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    if (line_.ends_with('\r')) {
        line_.remove_suffix(1);
    }
    return true;
}

bool RegistryParser::headerLine() {
    if (!nextLine()) {
        lineNumber_ = 1;
    }
    const auto end = line_.find_last_not_of(" \t");
    const auto header = line_.substr(0, end == std::string_view::npos ? 0 : end + 1);
    wide_ = header == "Windows Registry Editor Version 5.00";
    return wide_ || header == "REGEDIT4" ||
           fail(0, "this is no registry file: its first line must be \"REGEDIT4\"");
}

void RegistryParser::entryLine() {
    const auto at = skipBlanks(0);
    if (isEnd(at)) {
        return;
    }
    if (line_[at] == '[') {
        keyLine(at);
    } else if (line_[at] == '"' || line_[at] == '@') {
        valueLine(at);
    } else {
        fail(at, "expected a key in brackets, a value's name in quotes, or \"@\"");
    }
}

void RegistryParser::keyLine(std::size_t at) {
    section_ = Section::brokenKey;
    const auto close = line_.rfind(']'); // a key's name may hold brackets
    if (close == std::string_view::npos || close < at) {
        fail(line_.size(), "the key has no closing bracket");
        return;
    }
    const bool removes = line_[at + 1] == '-';
    const auto start = at + (removes ? 2 : 1);
    const CString key(line_.substr(start, close - start));
    if (key.view().find_first_not_of('\\') == std::string_view::npos) {
        fail(start, "the key has no name");
        return;
    }
    if (!nothingBehind(close + 1)) {
        return;
    }
    if (removes) {
        registry_.removeKey(key);
        section_ = Section::removedKey;
    } else {
        key_ = &registry_.obtain(key);
        section_ = Section::key;
    }
}

void RegistryParser::valueLine(std::size_t at) {
    if (section_ != Section::key) {
        if (section_ == Section::none) {
            fail(at, "the value stands before the first key");
        } else if (section_ == Section::removedKey) {
            fail(at, "a removed key can't have values");
        }
        if (line_.find("=hex") != std::string_view::npos) {
            skipContinuation();
        }
        return;
    }
    std::string name;
    const auto behind = line_[at] == '@' ? std::optional(at + 1) : quoted(at, name);
    if (!behind) {
        return;
    }
    at = skipBlanks(*behind);
    if (!startsAt(at, "=")) {
        fail(at, "expected \"=\" behind the value's name");
        return;
    }
    value(skipBlanks(at + 1), {name});
}

void RegistryParser::value(std::size_t at, const CString &name) {
    if (startsAt(at, "\"")) {
        textValue(at, name);
    } else if (startsAt(at, numberPrefix)) {
        numberValue(at + numberPrefix.size(), name);
    } else if (startsAt(at, bytesPrefix)) {
        if (!bytesValue(at + bytesPrefix.size(), name)) {
            skipContinuation();
        }
    } else if (startsAt(at, "-") && isEnd(skipBlanks(at + 1))) {
        key_->remove(name);
    } else {
        fail(at, "expected a text in quotes, \"dword:\", \"hex:\" or \"-\"");
    }
}

bool RegistryParser::textValue(std::size_t at, const CString &name) {
    std::string text;
    const auto behind = quoted(at, text);
    if (!behind || !nothingBehind(*behind)) {
        return false;
    }
    RegistryValue value;
    value.text = std::move(text);
    key_->set(name, std::move(value));
    return true;
}

bool RegistryParser::numberValue(std::size_t at, const CString &name) {
    constexpr std::size_t mostDigits = 8;
    RegistryValue value;
    value.type = RegistryValue::Type::dword;
    const auto start = at = skipBlanks(at);
    for (; at < line_.size() && hexDigit(line_[at]); ++at) {
        if (at - start == mostDigits) {
            return fail(start, "the number has more than eight digits");
        }
        value.number = value.number << 4U | *hexDigit(line_[at]);
    }
    if (at == start) {
        return fail(at, "expected a hexadecimal number");
    }
    if (!nothingBehind(at)) {
        return false;
    }
    key_->set(name, std::move(value));
    return true;
}

bool RegistryParser::bytesValue(std::size_t at, const CString &name) {
    const auto kind = bytesKind(at);
    if (!kind) {
        return false;
    }
    auto data = bytes(kind->behind);
    if (!data) {
        return false;
    }
    auto value = valueOfBytes(kind->number, std::move(*data), wide_);
    if (!value) {
        return fail(at, "a number has four bytes");
    }
    key_->set(name, std::move(*value));
    return true;
}

std::optional<RegistryParser::BytesKind> RegistryParser::bytesKind(std::size_t at) {
    constexpr unsigned binaryKind = 3;
    constexpr unsigned largestKind = 0xFFFFFFF;
    BytesKind kind{binaryKind, at};
    if (startsAt(at, "(")) {
        kind.number = 0;
        const auto start = ++at;
        for (; at < line_.size() && hexDigit(line_[at]) && kind.number <= largestKind; ++at) {
            kind.number = kind.number << 4U | *hexDigit(line_[at]);
        }
        if (at == start || !startsAt(at, ")")) {
            fail(at, "expected the number of a type in parentheses");
            return std::nullopt;
        }
        ++at;
    }
    if (!startsAt(at, ":")) {
        fail(at, "expected \":\" behind \"hex\"");
        return std::nullopt;
    }
    kind.behind = at + 1;
    return kind;
}

std::optional<std::vector<unsigned char>> RegistryParser::bytes(std::size_t at) {
    std::vector<unsigned char> data;
    bool commaNeeded = false;
    while (true) {
        at = skipBlanks(at);
        if (isEnd(at)) {
            return data;
        }
        if (line_[at] == '\\' && skipBlanks(at + 1) == line_.size()) {
            if (!nextLine()) {
                fail(at, "the value goes on behind the end of the file");
                line_ = {};
                return std::nullopt;
            }
            at = 0;
        } else if (commaNeeded) {
            if (line_[at] != ',') {
                fail(at, "expected a comma between two bytes");
                return std::nullopt;
            }
            commaNeeded = false;
            ++at;
        } else {
            const auto high = hexDigit(line_[at]);
            if (!high) {
                fail(at, "expected a byte of one or two hexadecimal digits");
                return std::nullopt;
            }
            const auto low = at + 1 < line_.size() ? hexDigit(line_[at + 1]) : std::nullopt;
            data.push_back(static_cast<unsigned char>(low ? *high << 4U | *low : *high));
            at += low ? 2U : 1U;
            commaNeeded = true;
        }
    }
}

// The lines that a value which can't be read goes on in are no entries of their own.
void RegistryParser::skipContinuation() {
    while (true) {
        const auto end = line_.find_last_not_of(" \t");
        const bool goesOn = end != std::string_view::npos && line_[end] == '\\';
        if (!goesOn || !nextLine()) {
            return;
        }
    }
}

std::optional<std::size_t> RegistryParser::quoted(std::size_t at, std::string &text) {
    for (auto next = at + 1; next < line_.size(); ++next) {
        if (line_[next] == '"') {
            return next + 1;
        }
        if (line_[next] == '\\') {
            if (!startsAt(next + 1, "\\") && !startsAt(next + 1, "\"")) {
                fail(next, "a backslash in a text is written twice");
                return std::nullopt;
            }
            ++next;
        }
        text += line_[next];
    }
    fail(at, "the text has no closing quote");
    return std::nullopt;
}

bool RegistryParser::nothingBehind(std::size_t at) {
    at = skipBlanks(at);
    return isEnd(at) || fail(at, "expected the end of the line");
}

std::size_t RegistryParser::skipBlanks(std::size_t at) const {
    while (at < line_.size() && isBlank(line_[at])) {
        ++at;
    }
    return at;
}

bool RegistryParser::startsAt(std::size_t at, std::string_view what) const {
    return at <= line_.size() && line_.substr(at).starts_with(what);
}

bool RegistryParser::isEnd(std::size_t at) const { return at >= line_.size() || line_[at] == ';'; }

bool RegistryParser::fail(std::size_t at, std::string_view reason) {
    if (++failures_ <= mostReports && report_) {
        CString place;
        place.Format(":%d:%zu: ", lineNumber_, at + 1);
        report_(name_ + place + reason);
    }
    return false;
}

} // namespace platform
