// Splits a line of a batch into words, quoted as in a shell. Nothing is expanded: a dollar or a star remains as it
// is, so that command templates can be written in single quotes or unquoted.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orchard_cm {

/// Reports a line that can't be split. The column counts from 1, in bytes.
class WordsError : public std::runtime_error {
  public:
    WordsError(std::size_t column, const std::string &reason) : std::runtime_error(reason), column_(column) {}
    [[nodiscard]] std::size_t column() const { return column_; }

  private:
    std::size_t column_;
};

/// Splits the line at blanks and tabs. Single quotes keep everything; double quotes keep everything except a
/// backslash before a double quote or a backslash; outside quotes a backslash keeps the next character. A '#' at
/// the start of a word begins a comment. A carriage return at the end of the line is dropped. Throws WordsError
/// for a quote that is not closed and for a backslash at the end of the line.
std::vector<std::string> splitWords(std::string_view line);

} // namespace orchard_cm
