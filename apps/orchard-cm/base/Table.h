// Table: rows of text in aligned columns.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace orchard_cm {

/// The columns that a UTF-8 text takes on a terminal, one for each character.
std::size_t columnsOf(std::string_view text);

class Table {
  public:
    explicit Table(std::initializer_list<std::string> headings);
    void add(std::vector<std::string> row);
    /// Writes headings and rows; the last column is not filled up. Nothing if there is no row.
    void write(std::ostream &out) const;

  private:
    std::vector<std::vector<std::string>> rows_;
};

} // namespace orchard_cm
