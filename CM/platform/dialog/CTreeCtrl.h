// Defines CTreeCtrl, a tree of items with branches that open and close, a selection and check boxes.
#pragma once

#include "CM/platform/dialog/CControl.h"
#include "CM/platform/dialog/RowSource.h"

#include <functional>
#include <memory>
#include <unordered_set>
#include <vector>

class ItemObserver;
struct ItemChange;

class CTreeCtrl : public CControl {
  public:
    enum class Selection { one, many };
    enum class Check { noBox, unchecked, checked, partly };

    /// One item, owned by its tree. Its setters call no handler.
    class Item {
      public:
        Item(CTreeCtrl &tree, Item *parent, int index, CString text)
            : tree_(tree), parent_(parent), text_(std::move(text)), index_(index) {}

        [[nodiscard]] const CString &text() const { return text_; }
        void setText(CString text) { assign(text_, std::move(text)); }
        [[nodiscard]] ItemImages images() const { return images_; }
        void setImages(ItemImages images) { assign(images_, images); }
        [[nodiscard]] Check check() const { return check_; }
        void setCheck(Check check) { assign(check_, check); }
        /// Returns the dialog's own pointer, from which it finds what the item shows.
        [[nodiscard]] void *data() const { return data_; }
        void setData(void *data) { data_ = data; }
        [[nodiscard]] bool isExpanded() const { return expanded_; }
        void setExpanded(bool expanded);
        /// Returns whether the item can be opened although it has no children yet: onExpand inserts them.
        [[nodiscard]] bool mayHaveChildren() const { return mayHaveChildren_; }
        void setMayHaveChildren(bool may) { assign(mayHaveChildren_, may); }
        [[nodiscard]] bool isSelected() const { return tree_.selected_.contains(const_cast<Item *>(this)); }

        /// Returns the parent, or null for an item at the top.
        [[nodiscard]] Item *parent() const { return parent_; }
        /// Returns the position among its siblings, from 0.
        [[nodiscard]] int index() const { return index_; }
        [[nodiscard]] const std::vector<std::unique_ptr<Item>> &children() const { return children_; }

      private:
        friend class CTreeCtrl;
        template <class VALUE> void assign(VALUE &member, std::type_identity_t<VALUE> value) {
            if (member != value) {
                member = std::move(value);
                tree_.itemChanged(*this);
            }
        }

        CTreeCtrl &tree_;
        Item *parent_;
        std::vector<std::unique_ptr<Item>> children_;
        CString text_;
        ItemImages images_;
        void *data_ = nullptr;
        int index_;
        Check check_ = Check::noBox;
        bool expanded_ = false;
        bool mayHaveChildren_ = false;
    };
    /// Holds the handlers, each of which may be empty.
    struct Handlers {
        std::function<void()> onSelectionChanged;
        std::function<void(Item &)> onExpand;   ///< when the item opens, not when it closes
        std::function<void(Item &)> onCheck;    ///< after its box has changed
        std::function<void(Item &)> onActivate; ///< a double click, or Enter
    };

    CTreeCtrl(CDialog &dialog, CString id, CString caption, Selection selection, Handlers handlers = {})
        : CControl(dialog, std::move(id), std::move(caption)), handlers_(std::move(handlers)),
          selection_(selection) {}

    [[nodiscard]] Selection selectionKind() const { return selection_; }
    /// Returns the items without a parent.
    [[nodiscard]] const std::vector<std::unique_ptr<Item>> &roots() const { return roots_; }
    /// Appends an item below `parent`, or at the top if it is null.
    Item &InsertItem(CString text, Item *parent = nullptr);
    /// Deletes the item and all items below it.
    void DeleteItem(Item &item);
    void DeleteAllItems();

    [[nodiscard]] int selectedCount() const { return static_cast<int>(selected_.size()); }
    /// Returns all selected items, owners before their children.
    [[nodiscard]] std::vector<Item *> selectedItems() const;
    /// Returns the first item with this text, owners before their children, or null.
    [[nodiscard]] Item *find(const CString &text) const;
    /// Selects or deselects an item. In a single-selection tree, selecting an item deselects the others.
    void selectItem(Item &item, bool select);

    // Events. Refused for an item inside a closed branch, since the user doesn't see it.
    /// The user has selected exactly these items. No handler is called if the selection does not change.
    bool select(const std::vector<Item *> &items);
    /// Opens or closes a branch. Refused for an item that has no children and can't get any.
    bool expand(Item &item, bool open);
    /// Checks or clears the box. Refused for an item without one.
    bool enterCheck(Item &item, bool check);
    bool activate(Item &item);

    /// Sets the observer of the items, which must live until it is replaced; null for none.
    void setObserver(ItemObserver *observer) { observer_ = observer; }
    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    class Announcement;

    [[nodiscard]] bool canBeSeen(const Item &item) const;
    [[nodiscard]] std::vector<std::unique_ptr<Item>> &siblingsBelow(Item *parent) {
        return parent == nullptr ? roots_ : parent->children_;
    }
    void itemChanged(Item &item);
    /// Returns true if the selection has changed.
    bool setSelection(std::unordered_set<Item *> selected);

    Handlers handlers_;
    std::vector<std::unique_ptr<Item>> roots_;
    std::unordered_set<Item *> selected_;
    ItemObserver *observer_ = nullptr;
    Selection selection_;
};

/// Describes what happens to the items of a tree.
struct ItemChange {
    enum class Kind {
        changed,   ///< `item` shows something else
        expanded,  ///< `item` has been opened or closed
        inserted,  ///< a child of `item` (an item at the top if null) is new: the one at `index`
        removed,   ///< the child at `index` is gone, with all items below it
        reset,     ///< any item may have changed
        selection, ///< the selection has changed
    };
    Kind kind = Kind::reset;
    CTreeCtrl::Item *item = nullptr;
    int index = 0;
};

/// Observes the items of a tree, so that a view updates only the items that have changed. It must not throw.
class ItemObserver {
  public:
    /// Called while the tree still has the old items; not called for `changed`.
    virtual void beforeChange(const ItemChange & /*change*/) {}
    virtual void afterChange(const ItemChange &change) = 0;

  protected:
    ~ItemObserver() = default;
};
