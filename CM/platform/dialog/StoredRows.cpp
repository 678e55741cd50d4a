#include "CM/platform/dialog/StoredRows.h"

#include <algorithm>
#include <functional>

CString StoredRows::text(int row, int column) const {
    const auto &cells = at(row).cells;
    const auto cell = static_cast<std::size_t>(column);
    return cell < cells.size() ? cells[cell] : CString();
}

void StoredRows::sort(int column, bool descending) {
    const auto text = [cell = static_cast<std::size_t>(column)](const std::unique_ptr<Row> &row) {
        return cell < row->cells.size() ? row->cells[cell].view() : std::string_view();
    };
    if (descending) {
        std::ranges::stable_sort(rows_, std::ranges::greater(), text);
    } else {
        std::ranges::stable_sort(rows_, std::ranges::less(), text);
    }
}
