#include "CM/platform/dialog/CListCtrl.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

/// Announces a change to the observer, before and after it, and counts it.
class CListCtrl::Announcement {
  public:
    Announcement(CListCtrl &list, RowChange change) : list_(list), change_(change) {
        if (list_.observer_ != nullptr) {
            list_.observer_->beforeChange(change_);
        }
    }
    ~Announcement() {
        list_.changed();
        if (list_.observer_ != nullptr) {
            list_.observer_->afterChange(change_);
        }
    }
    Announcement(const Announcement &) = delete;
    Announcement &operator=(const Announcement &) = delete;

  private:
    CListCtrl &list_;
    RowChange change_;
};

void CListCtrl::InsertColumn(CString title, Align align) {
    const Announcement announcement(*this, {RowChange::Kind::reset});
    columns_.push_back({std::move(title), align});
}

void CListCtrl::DeleteAllColumns() {
    const Announcement announcement(*this, {RowChange::Kind::reset});
    columns_.clear();
}

CString CListCtrl::GetItemText(int row, int column) const {
    return holds(row) && column >= 0 ? source_->text(row, column) : CString();
}

int CListCtrl::InsertItem(Row row) {
    const int index = own_.rowCount();
    if (source_ == &own_) {
        insertRows(index, 1, [&] { own_.append(std::move(row)); });
    }
    return index;
}

void CListCtrl::DeleteItem(int row) {
    if (ownsRow(row)) {
        removeRows(row, 1, [&] { own_.erase(row); });
    }
}

void CListCtrl::DeleteAllItems() {
    if (source_ == &own_) {
        resetRows([this] { own_.clear(); });
    }
}

void CListCtrl::SetItemText(int row, int column, CString text) {
    if (!ownsRow(row) || column < 0 || column >= static_cast<int>(columns_.size())) {
        return;
    }
    auto &cells = own_.at(row).cells;
    const auto cell = static_cast<std::size_t>(column);
    cells.resize(std::max(cells.size(), cell + 1));
    if (cells[cell] != text) {
        cells[cell] = std::move(text);
        rowsChanged(row);
    }
}

void CListCtrl::SetItemImages(int row, ItemImages images) {
    if (ownsRow(row) && own_.images(row) != images) {
        own_.at(row).images = images;
        rowsChanged(row);
    }
}

void CListCtrl::sortByColumn(int column, bool descending) {
    if (column >= 0 && source_ == &own_) {
        reorderRows([&] { own_.sort(column, descending); });
    }
    setSortMark(column, descending);
}

void CListCtrl::SetSource(RowSource *source) {
    const Announcement announcement(*this, {RowChange::Kind::reset});
    source_ = source != nullptr ? source : &own_;
    selected_.clear();
}

void CListCtrl::rowsChanged(int first, int count) {
    if (count <= 0) {
        return;
    }
    changed();
    if (observer_ != nullptr) {
        observer_->afterChange({RowChange::Kind::changed, first, count});
    }
}

void CListCtrl::shiftSelection(int first, int by) {
    // Only the rows from `first` on are touched, so that the cost of appending rows does not depend on the
    // selection.
    const auto tail = selected_.lower_bound(first);
    std::vector<int> rows(tail, selected_.end());
    selected_.erase(tail, selected_.end());
    for (const int row : rows) {
        selected_.insert(selected_.end(), row + by);
    }
}

void CListCtrl::insertRows(int first, int count, const Change &insert) {
    if (count <= 0) {
        return;
    }
    const Announcement announcement(*this, {RowChange::Kind::inserted, first, count});
    insert();
    shiftSelection(first, count);
}

void CListCtrl::removeRows(int first, int count, const Change &remove) {
    if (count <= 0) {
        return;
    }
    const Announcement announcement(*this, {RowChange::Kind::removed, first, count});
    remove();
    selected_.erase(selected_.lower_bound(first), selected_.lower_bound(first + count));
    shiftSelection(first + count, -count);
}

void CListCtrl::reorderRows(const Change &reorder) { rearrange(RowChange::Kind::reordered, reorder); }
void CListCtrl::resetRows(const Change &change) { rearrange(RowChange::Kind::reset, change); }

void CListCtrl::rearrange(RowChange::Kind kind, const Change &change) {
    std::unordered_set<const void *> identities;
    for (const int row : selected_) {
        identities.insert(source_->identity(row));
    }
    const Announcement announcement(*this, {kind, 0, GetItemCount()});
    change();
    selected_.clear();
    for (int row = 0; row < GetItemCount() && selected_.size() < identities.size(); ++row) {
        if (identities.contains(source_->identity(row))) {
            selected_.insert(selected_.end(), row);
        }
    }
}

bool CListCtrl::setSelection(std::set<int> selected) {
    std::vector<int> changed;
    std::ranges::set_symmetric_difference(selected_, selected, std::back_inserter(changed));
    if (changed.empty()) {
        return false;
    }
    const int first = changed.front();
    const Announcement announcement(*this, {RowChange::Kind::selection, first, changed.back() - first + 1});
    selected_ = std::move(selected);
    return true;
}

void CListCtrl::selectRow(int index, bool select) {
    if (!holds(index) || isSelected(index) == select) {
        return;
    }
    if (select && selection_ == Selection::one) {
        setSelection({index});
        return;
    }
    const Announcement announcement(*this, {RowChange::Kind::selection, index, 1});
    if (select) {
        selected_.insert(index);
    } else {
        selected_.erase(index);
    }
}

void CListCtrl::selectRows(const std::vector<int> &rows) {
    std::set<int> selected;
    for (const int row : rows) {
        if (holds(row) && (selected.empty() || selection_ == Selection::many)) {
            selected.insert(selected.end(), row);
        }
    }
    setSelection(std::move(selected));
}

void CListCtrl::setSortMark(int column, bool descending) {
    assign(sortColumn_, std::max(column, -1));
    assign(sortDescending_, descending);
}

bool CListCtrl::select(const std::vector<int> &rows) {
    if (!takesEvents() || !std::ranges::all_of(rows, [this](int row) { return holds(row); }) ||
        (selection_ == Selection::one && rows.size() > 1)) {
        return false;
    }
    if (setSelection({rows.begin(), rows.end()}) && handlers_.onSelectionChanged) {
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
