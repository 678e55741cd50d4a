// CListCtrl: a table of row records with a selection.
#pragma once

#include "CM/platform/dialog/CControl.h"

#include <functional>
#include <vector>

class CListCtrl : public CControl {
  public:
    enum class Align { left, right, centre };
    enum class Selection { one, many };
    struct Column {
        CString title;
        Align align = Align::left;
    };
    /// One row. `data` is the dialog's own, for finding back what the row stands for.
    struct Row {
        std::vector<CString> cells;
        int icon = -1; ///< index into the host's icon list, -1 for none
        int overlay = 0;
        int stateImage = 0;
        void *data = nullptr;
        bool selected = false;
    };
    /// The handlers, each of which may be empty. `row` and `column` count from 0.
    struct Handlers {
        std::function<void()> onSelectionChanged;
        std::function<void(int column)> onColumnClick;
        std::function<void(int row)> onActivate; ///< a double click, or Enter
    };

    CListCtrl(CDialog &dialog, CString id, CString caption, Selection selection, Handlers handlers = {})
        : CControl(dialog, std::move(id), std::move(caption)), handlers_(std::move(handlers)),
          selection_(selection) {}

    [[nodiscard]] Selection selectionKind() const { return selection_; }
    [[nodiscard]] const std::vector<Column> &columns() const { return columns_; }
    void InsertColumn(CString title, Align align = Align::left) { columns_.push_back({std::move(title), align}); }
    /// Takes all columns off; the rows stay.
    void DeleteAllColumns() { columns_.clear(); }

    [[nodiscard]] int GetItemCount() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] const std::vector<Row> &rows() const { return rows_; }
    /// The row, to be changed; throws std::out_of_range for an index outside.
    [[nodiscard]] Row &row(int index) { return rows_.at(static_cast<std::size_t>(index)); }
    /// Appends a row and returns its index.
    int InsertItem(Row row);
    void DeleteAllItems() { rows_.clear(); }
    /// The text of a cell, empty for one that isn't there.
    [[nodiscard]] CString GetItemText(int row, int column) const;
    /// Makes the row long enough for the column; an index outside the table is ignored.
    void SetItemText(int row, int column, CString text);

    [[nodiscard]] int GetSelectedCount() const;
    /// The indices of the selected rows in the order of the rows.
    [[nodiscard]] std::vector<int> selectedRows() const;
    /// Selects a row or takes its selection away. With a selection of one the other rows lose theirs.
    void selectRow(int index, bool select);

    /// Sorts the rows by the bytes of a column's text; rows that are equal keep their order, selected rows stay
    /// selected.
    void sortByColumn(int column, bool descending = false);
    /// Shows the mark of a sorted column, -1 for none.
    void setSortMark(int column, bool descending = false);
    [[nodiscard]] int sortColumn() const { return sortColumn_; }
    [[nodiscard]] bool sortDescending() const { return sortDescending_; }

    // Events. An index that isn't there, or more than one row with a selection of one, is refused.
    /// Exactly these rows are selected now. The same selection as before reaches no handler.
    bool select(const std::vector<int> &rows);
    bool clickColumn(int column);
    bool activate(int row);

    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    [[nodiscard]] bool holds(int row) const { return row >= 0 && row < GetItemCount(); }

    Handlers handlers_;
    std::vector<Column> columns_;
    std::vector<Row> rows_;
    Selection selection_;
    int sortColumn_ = -1;
    bool sortDescending_ = false;
};
