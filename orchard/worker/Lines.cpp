#include "orchard/worker/Lines.h"

#include <algorithm>

namespace orchard {

void appendLines(std::string_view text, CStringList &lines) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end == std::string_view::npos ? text.size() : end + 1);
        lines.AddTail(CString(line));
        text.remove_prefix(line.size());
    }
}

} // namespace orchard
