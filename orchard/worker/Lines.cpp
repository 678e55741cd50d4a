#include "orchard/worker/Lines.h"

#include <utility>

namespace orchard {

void appendLines(std::string text, CStringList &lines) {
    constexpr std::size_t longText = 256 * 1024; // bytes
    if (text.size() > longText) {
        lines.GetAt(lines.AddTail(CString())) = CString(std::move(text));
        return;
    }
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = rest.find('\n');
        const std::string_view line = rest.substr(0, end == std::string_view::npos ? rest.size() : end + 1);
        lines.AddTail(CString(line));
        rest.remove_prefix(line.size());
    }
}

} // namespace orchard
