#include "orchard/messages/TerminalText.h"

#include "CM/platform/CString.h"

#include <charconv>

namespace orchard {

std::string forTerminal(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        // In UTF-8 the control characters U+0080 to U+009F take two bytes.
        const bool isHighControl =
            byte == 0xc2 && at + 1 < text.size() && static_cast<unsigned char>(text[at + 1]) < 0xa0;
        if ((byte < ' ' && text[at] != '\n' && text[at] != '\t') || byte == 0x7f || isHighControl) {
            result += text[at] == '\r' ? "" : "?";
            at += isHighControl ? 1 : 0;
        } else {
            result += text[at];
        }
    }
    return result;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

std::optional<int> wholeNumber(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

std::optional<std::size_t> typedOption(std::string_view typed, const std::vector<std::string> &options) {
    if (const auto number = wholeNumber(typed)) {
        const auto index = static_cast<std::size_t>(*number) - 1;
        return *number >= 1 && index < options.size() ? std::optional(index) : std::nullopt;
    }
    std::optional<std::size_t> found;
    bool isAmbiguous = false;
    for (std::size_t i = 0; i < options.size() && !typed.empty(); ++i) {
        const std::string_view option = options[i];
        if (!NoCaseEqual()(option.substr(0, typed.size()), typed)) {
            continue;
        }
        if (option.size() == typed.size()) {
            return i;
        }
        // "n" means "No", although "No to all" begins with it too.
        if (found && NoCaseEqual()(option.substr(0, options[*found].size()), options[*found])) {
            continue;
        }
        isAmbiguous =
            isAmbiguous ||
            (found && !NoCaseEqual()(std::string_view(options[*found]).substr(0, option.size()), option));
        found = i;
    }
    return isAmbiguous ? std::nullopt : found;
}

} // namespace orchard
