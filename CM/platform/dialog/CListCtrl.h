// Defines CListCtrl, a table with a selection. It keeps its rows itself, or shows the rows of a RowSource without
// copying them.
#pragma once

#include "CM/platform/dialog/CControl.h"
#include "CM/platform/dialog/StoredRows.h"

#include <functional>
#include <set>
#include <vector>

/// Describes what happens to `count` rows of a list from `first` on.
struct RowChange {
    enum class Kind {
        changed,   ///< they show something else
        inserted,  ///< they are new
        removed,   ///< they are gone
        reordered, ///< all rows remain, in another order
        reset,     ///< any row or column may have changed
        selection, ///< some of them have been selected or deselected
    };
    Kind kind = Kind::reset;
    int first = 0;
    int count = 0;
};

/// Observes the rows of a list, so that a view updates only the rows that have changed. It must not throw.
class RowObserver {
  public:
    /// Called while the list still shows the old rows; not called for `changed`.
    virtual void beforeChange(const RowChange & /*change*/) {}
    virtual void afterChange(const RowChange &change) = 0;

  protected:
    ~RowObserver() = default;
};

class CListCtrl : public CControl {
  public:
    enum class Align { left, right, centre };
    enum class Selection { one, many };
    struct Column {
        CString title;
        Align align = Align::left;
    };
    using Row = StoredRows::Row;
    /// Holds the handlers, each of which may be empty. `row` and `column` count from 0.
    struct Handlers {
        std::function<void()> onSelectionChanged;
        std::function<void(int column)> onColumnClick;
        std::function<void(int row)> onActivate; ///< a double click, or Enter
    };
    using Change = std::function<void()>;

    CListCtrl(CDialog &dialog, CString id, CString caption, Selection selection, Handlers handlers = {})
        : CControl(dialog, std::move(id), std::move(caption)), handlers_(std::move(handlers)),
          selection_(selection) {}

    [[nodiscard]] Selection selectionKind() const { return selection_; }
    [[nodiscard]] const std::vector<Column> &columns() const { return columns_; }
    void InsertColumn(CString title, Align align = Align::left);
    /// Removes all columns; the rows remain.
    void DeleteAllColumns();

    // What the rows show, wherever they are kept. An index out of range returns an empty text, no image or null.
    [[nodiscard]] int GetItemCount() const { return source_->rowCount(); }
    [[nodiscard]] CString GetItemText(int row, int column) const;
    [[nodiscard]] ItemImages GetItemImages(int row) const {
        return holds(row) ? source_->images(row) : ItemImages();
    }
    [[nodiscard]] void *GetItemData(int row) const { return holds(row) ? source_->data(row) : nullptr; }
    /// Identifies a row to an observer that has to find it again after a reordering, such as its current row.
    [[nodiscard]] const void *identityOf(int row) const { return holds(row) ? source_->identity(row) : nullptr; }

    // The list's own rows. An index out of range is ignored, and all calls are ignored while a source is set.
    /// Appends a row and returns its index.
    int InsertItem(Row row);
    void DeleteItem(int row);
    void DeleteAllItems();
    /// Extends the row to the column if it is shorter.
    void SetItemText(int row, int column, CString text);
    void SetItemImages(int row, ItemImages images);
    /// Sorts the rows by the bytes of a column's text and marks the column; equal rows keep their order.
    void sortByColumn(int column, bool descending = false);

    // Rows of a source.
    /// Shows the rows of `source`, which must live until it is replaced. With null the list shows its own rows
    /// again. Clears the selection.
    void SetSource(RowSource *source);
    // The dialog reports what it does to the source: it calls rowsChanged after it has changed the contents of
    // rows, and passes in the change itself when rows are inserted, removed or reordered. Selected rows stay
    // selected at their new places, which is not reported as a change of the selection. A count of 0 does nothing.
    void rowsChanged(int first, int count = 1);
    void insertRows(int first, int count, const Change &insert);
    void removeRows(int first, int count, const Change &remove);
    void reorderRows(const Change &reorder);
    void resetRows(const Change &change);

    [[nodiscard]] bool isSelected(int row) const { return selected_.contains(row); }
    [[nodiscard]] int GetSelectedCount() const { return static_cast<int>(selected_.size()); }
    /// Returns the indices of the selected rows in the order of the rows.
    [[nodiscard]] std::vector<int> selectedRows() const { return {selected_.begin(), selected_.end()}; }
    /// Selects or deselects a row. In a single-selection list, selecting a row deselects the others.
    void selectRow(int index, bool select);
    /// Selects exactly these rows. Indices out of range are ignored; a single-selection list takes only the first.
    void selectRows(const std::vector<int> &rows);

    /// Shows the mark of a sorted column; -1 shows none.
    void setSortMark(int column, bool descending = false);
    [[nodiscard]] int sortColumn() const { return sortColumn_; }
    [[nodiscard]] bool sortDescending() const { return sortDescending_; }

    // Events. Refused for an index out of range, or for more than one row in a single-selection list.
    /// The user has selected exactly these rows. No handler is called if the selection does not change.
    bool select(const std::vector<int> &rows);
    bool clickColumn(int column);
    bool activate(int row);

    /// Sets the observer of the rows, which must live until it is replaced; null for none.
    void setObserver(RowObserver *observer) { observer_ = observer; }
    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    class Announcement;

    [[nodiscard]] bool holds(int row) const { return row >= 0 && row < GetItemCount(); }
    [[nodiscard]] bool ownsRow(int row) const { return source_ == &own_ && holds(row); }
    /// Moves the selection of the rows from `first` on by `by` rows.
    void shiftSelection(int first, int by);
    /// Makes a change after which any row may be at any place.
    void rearrange(RowChange::Kind kind, const Change &change);
    /// Returns true if the selection has changed.
    bool setSelection(std::set<int> selected);

    Handlers handlers_;
    std::vector<Column> columns_;
    StoredRows own_;
    RowSource *source_ = &own_;
    RowObserver *observer_ = nullptr;
    std::set<int> selected_;
    Selection selection_;
    int sortColumn_ = -1;
    bool sortDescending_ = false;
};
