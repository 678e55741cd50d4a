#include "orchard/worker/Lines.h"

#include <algorithm>

namespace orchard {

namespace {
constexpr std::size_t longText = 256 * 1024; // bytes
constexpr std::size_t entryOfALongText = 64 * 1024;
} // namespace

void appendLines(std::string_view text, CStringList &lines) {
    const std::size_t least = text.size() <= longText ? 1 : entryOfALongText;
    while (!text.empty()) {
        const std::size_t end = text.find('\n', std::min(least, text.size()) - 1);
        const std::string_view entry = text.substr(0, end == std::string_view::npos ? text.size() : end + 1);
        lines.AddTail(CString(entry));
        text.remove_prefix(entry.size());
    }
}

} // namespace orchard
