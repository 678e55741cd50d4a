#include "apps/orchard-cm/base/Table.h"

#include <algorithm>

namespace orchard_cm {

std::size_t columnsOf(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

Table::Table(std::initializer_list<std::string> headings) { rows_.emplace_back(headings); }

void Table::add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }

void Table::write(std::ostream &out) const {
    if (rows_.size() == 1) {
        return;
    }
    std::vector<std::size_t> widths;
    for (const auto &row : rows_) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], columnsOf(row[column]));
        }
    }
    for (const auto &row : rows_) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            out << row[column];
            if (column + 1 < row.size()) {
                out << std::string(widths[column] - columnsOf(row[column]) + 2, ' ');
            }
        }
        out << '\n';
    }
}

} // namespace orchard_cm
