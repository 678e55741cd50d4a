// CTreeCtrl: a tree of item records with open branches, a selection and boxes.
#pragma once

#include "CM/platform/dialog/CControl.h"

#include <functional>
#include <memory>
#include <vector>

class CTreeCtrl : public CControl {
  public:
    enum class Selection { one, many };
    enum class Check { noBox, unchecked, checked, partly };

    /// One item, owned by its tree. The dialog changes the fields freely; they call no handler. `data` is the
    /// dialog's own, for finding back what the item stands for.
    struct Item {
        CString text;
        int icon = -1; ///< index into the host's icon list, -1 for none
        int overlay = 0;
        int stateImage = 0;
        Check check = Check::noBox;
        void *data = nullptr;
        bool selected = false;
        bool expanded = false;
        /// Whether the item can be opened although it has no children yet: they come in its onExpand.
        bool mayHaveChildren = false;

        [[nodiscard]] Item *parent() const { return parent_; }
        [[nodiscard]] const std::vector<std::unique_ptr<Item>> &children() const { return children_; }

      private:
        friend class CTreeCtrl;
        Item *parent_ = nullptr;
        std::vector<std::unique_ptr<Item>> children_;
    };
    /// The handlers, each of which may be empty.
    struct Handlers {
        std::function<void()> onSelectionChanged;
        std::function<void(Item &)> onExpand;   ///< when the item opens; not when it closes
        std::function<void(Item &)> onCheck;    ///< after its box has changed
        std::function<void(Item &)> onActivate; ///< a double click, or Enter
    };

    CTreeCtrl(CDialog &dialog, CString id, CString caption, Selection selection, Handlers handlers = {})
        : CControl(dialog, std::move(id), std::move(caption)), handlers_(std::move(handlers)),
          selection_(selection) {}

    [[nodiscard]] Selection selectionKind() const { return selection_; }
    /// The items without a parent.
    [[nodiscard]] const std::vector<std::unique_ptr<Item>> &roots() const { return top_.children_; }
    /// Appends an item below `parent`, at the top for null.
    Item &InsertItem(CString text, Item *parent = nullptr);
    /// Deletes the item with all below it.
    void DeleteItem(Item &item);
    void DeleteAllItems() { top_.children_.clear(); }

    /// All selected items, owners before what they own.
    [[nodiscard]] std::vector<Item *> selectedItems() const;
    /// The first item with this text, owners before what they own, or null.
    [[nodiscard]] Item *find(const CString &text) const;
    /// Selects an item or takes its selection away. With a selection of one the other items lose theirs.
    void selectItem(Item &item, bool select);

    // Events. An item inside a closed branch isn't seen, and is refused.
    /// Exactly these items are selected now. The same selection as before reaches no handler.
    bool select(const std::vector<Item *> &items);
    /// Opens or closes a branch; refused for an item without children that has none to come.
    bool expand(Item &item, bool open);
    /// Sets or clears the box; refused for an item without one.
    bool enterCheck(Item &item, bool check);
    bool activate(Item &item);

    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    [[nodiscard]] bool canBeSeen(const Item &item) const;

    Handlers handlers_;
    Item top_; ///< holds the items without a parent, and is none itself
    Selection selection_;
};
