// Writes rows of text in aligned columns.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace orchard_cm {

/// Returns how many columns a UTF-8 text occupies on a terminal, counting one for each character.
std::size_t columnsOf(std::string_view text);

class Table {
  public:
    Table(std::initializer_list<std::string_view> headings);
    /// Adds a row, which has as many cells as there are headings.
    void add(std::initializer_list<std::string_view> cells);
    /// Writes headings and rows; the last column is not padded. Writes nothing if there is no row.
    void write(std::ostream &out) const;

  private:
    struct Cell {
        std::size_t end;     ///< offset in cells_
        std::size_t columns; ///< columns that the cell occupies
    };
    std::string cells_; ///< the texts of all cells, row by row
    std::vector<Cell> ends_;
    std::vector<std::size_t> widths_; ///< of the columns
};

} // namespace orchard_cm
