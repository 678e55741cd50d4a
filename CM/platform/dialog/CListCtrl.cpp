#include "CM/platform/dialog/CListCtrl.h"

#include <algorithm>

int CListCtrl::InsertItem(Row row) {
    rows_.push_back(std::move(row));
    return GetItemCount() - 1;
}

CString CListCtrl::GetItemText(int row, int column) const {
    if (!holds(row) || column < 0) {
        return {};
    }
    const auto &cells = rows_[static_cast<std::size_t>(row)].cells;
    const auto cell = static_cast<std::size_t>(column);
    return cell < cells.size() ? cells[cell] : CString();
}

void CListCtrl::SetItemText(int row, int column, CString text) {
    if (!holds(row) || column < 0 || column >= static_cast<int>(columns_.size())) {
        return;
    }
    auto &cells = rows_[static_cast<std::size_t>(row)].cells;
    const auto cell = static_cast<std::size_t>(column);
    cells.resize(std::max(cells.size(), cell + 1));
    cells[cell] = std::move(text);
}

int CListCtrl::GetSelectedCount() const { return static_cast<int>(std::ranges::count_if(rows_, &Row::selected)); }

std::vector<int> CListCtrl::selectedRows() const {
    std::vector<int> selected;
    for (int index = 0; index < GetItemCount(); ++index) {
        if (rows_[static_cast<std::size_t>(index)].selected) {
            selected.push_back(index);
        }
    }
    return selected;
}

void CListCtrl::selectRow(int index, bool select) {
    if (!holds(index)) {
        return;
    }
    if (select && selection_ == Selection::one) {
        std::ranges::for_each(rows_, [](Row &row) { row.selected = false; });
    }
    rows_[static_cast<std::size_t>(index)].selected = select;
}

void CListCtrl::sortByColumn(int column, bool descending) {
    if (column >= 0) {
        const auto text = [cell = static_cast<std::size_t>(column)](const Row &row) {
            return cell < row.cells.size() ? row.cells[cell].view() : std::string_view();
        };
        if (descending) {
            std::ranges::stable_sort(rows_, std::ranges::greater(), text);
        } else {
            std::ranges::stable_sort(rows_, std::ranges::less(), text);
        }
    }
    setSortMark(column, descending);
}

void CListCtrl::setSortMark(int column, bool descending) {
    sortColumn_ = column >= 0 ? column : -1;
    sortDescending_ = descending;
}

bool CListCtrl::select(const std::vector<int> &rows) {
    if (!takesEvents() || !std::ranges::all_of(rows, [this](int row) { return holds(row); }) ||
        (selection_ == Selection::one && rows.size() > 1)) {
        return false;
    }
    std::vector<bool> wanted(rows_.size());
    for (const int row : rows) {
        wanted[static_cast<std::size_t>(row)] = true;
    }
    bool changed = false;
    for (std::size_t index = 0; index < rows_.size(); ++index) {
        changed |= rows_[index].selected != wanted[index];
        rows_[index].selected = wanted[index];
    }
    if (changed && handlers_.onSelectionChanged) {
        handlers_.onSelectionChanged();
    }
    return true;
}

bool CListCtrl::clickColumn(int column) {
    if (!takesEvents() || column < 0 || column >= static_cast<int>(columns_.size())) {
        return false;
    }
    if (handlers_.onColumnClick) {
        handlers_.onColumnClick(column);
    }
    return true;
}

bool CListCtrl::activate(int row) {
    if (!takesEvents() || !holds(row)) {
        return false;
    }
    if (handlers_.onActivate) {
        handlers_.onActivate(row);
    }
    return true;
}
