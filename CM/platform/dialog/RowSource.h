// Provides the rows of a list from the dialog's own data, so that the list needs no copy.
#pragma once

#include "CM/platform/CString.h"

/// The images of a row or an item.
struct ItemImages {
    int icon = -1; ///< index into the host's icon list, -1 for none
    int overlay = 0;
    int state = 0;
    friend bool operator==(const ItemImages &, const ItemImages &) = default;
};

/// Provides rows to a list. Rows and columns count from 0. A driver queries only the cells that it shows.
class RowSource {
  public:
    virtual ~RowSource() = default;
    [[nodiscard]] virtual int rowCount() const = 0;
    [[nodiscard]] virtual CString text(int row, int column) const = 0;
    [[nodiscard]] virtual ItemImages images(int /*row*/) const { return {}; }
    /// Returns the record that the row shows.
    [[nodiscard]] virtual void *data(int row) const = 0;
    /// Identifies the row among all others wherever it is: a list finds a selected row by it after a re-sort. A
    /// source that creates new records in CListCtrl::resetRows overrides this with something that outlives them,
    /// because a new record may be at the address of an old one.
    [[nodiscard]] virtual const void *identity(int row) const { return data(row); }
};
