#include "apps/orchard-cm/base/Table.h"

#include <algorithm>

namespace orchard_cm {

std::size_t columnsOf(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

Table::Table(std::initializer_list<std::string_view> headings) : widths_(headings.size()) { add(headings); }

void Table::add(std::initializer_list<std::string_view> cells) {
    std::size_t column = 0;
    for (const std::string_view cell : cells) {
        cells_ += cell;
        ends_.push_back({cells_.size(), columnsOf(cell)});
        widths_[column] = std::max(widths_[column], ends_.back().columns);
        ++column;
    }
}

void Table::write(std::ostream &out) const {
    constexpr std::size_t gap = 2;
    constexpr std::size_t enough = 64 * 1024; // bytes per write to the stream
    if (ends_.size() == widths_.size()) {
        return;
    }
    std::string lines;
    std::size_t start = 0;
    for (std::size_t at = 0; at < ends_.size(); ++at) {
        const std::size_t column = at % widths_.size();
        lines.append(cells_, start, ends_[at].end - start);
        start = ends_[at].end;
        if (column + 1 < widths_.size()) {
            lines.append(widths_[column] - ends_[at].columns + gap, ' ');
            continue;
        }
        lines += '\n';
        if (lines.size() >= enough) {
            out << lines;
            lines.clear();
        }
    }
    out << lines;
}

} // namespace orchard_cm
