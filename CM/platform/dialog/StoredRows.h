// Holds the rows that a list keeps itself.
#pragma once

#include "CM/platform/dialog/RowSource.h"

#include <memory>
#include <vector>

class StoredRows final : public RowSource {
  public:
    struct Row {
        std::vector<CString> cells;
        ItemImages images{};
        void *data = nullptr; ///< the dialog's own, for finding what the row shows
    };

    [[nodiscard]] int rowCount() const override { return static_cast<int>(rows_.size()); }
    [[nodiscard]] CString text(int row, int column) const override;
    [[nodiscard]] ItemImages images(int row) const override { return at(row).images; }
    [[nodiscard]] void *data(int row) const override { return at(row).data; }
    [[nodiscard]] const void *identity(int row) const override { return &at(row); }

    [[nodiscard]] Row &at(int row) const { return *rows_[static_cast<std::size_t>(row)]; }
    void append(Row row) { rows_.push_back(std::make_unique<Row>(std::move(row))); }
    void erase(int row) { rows_.erase(rows_.begin() + row); }
    void clear() { rows_.clear(); }
    /// Sorts by the bytes of a column's text; equal rows keep their order.
    void sort(int column, bool descending);

  private:
    std::vector<std::unique_ptr<Row>> rows_; ///< rows keep their address when they are sorted
};
