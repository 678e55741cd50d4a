#include "CM/platform/dialog/CTreeCtrl.h"

#include <algorithm>

namespace {

// Visits owners before their children, and siblings in their order. `visit` returns whether to continue.
template <class VISIT> void walk(const std::vector<std::unique_ptr<CTreeCtrl::Item>> &roots, VISIT visit) {
    std::vector<CTreeCtrl::Item *> open;
    const auto push = [&open](const auto &items) {
        for (auto item = items.rbegin(); item != items.rend(); ++item) {
            open.push_back(item->get());
        }
    };
    push(roots);
    while (!open.empty()) {
        CTreeCtrl::Item *const item = open.back();
        open.pop_back();
        if (!visit(*item)) {
            return;
        }
        push(item->children());
    }
}

} // namespace

/// Announces a change to the observer, before and after it, and counts it.
class CTreeCtrl::Announcement {
  public:
    Announcement(CTreeCtrl &tree, ItemChange change) : tree_(tree), change_(change) {
        if (tree_.observer_ != nullptr) {
            tree_.observer_->beforeChange(change_);
        }
    }
    ~Announcement() {
        tree_.changed();
        if (tree_.observer_ != nullptr) {
            tree_.observer_->afterChange(change_);
        }
    }
    Announcement(const Announcement &) = delete;
    Announcement &operator=(const Announcement &) = delete;

  private:
    CTreeCtrl &tree_;
    ItemChange change_;
};

void CTreeCtrl::Item::setExpanded(bool expanded) {
    if (expanded_ != expanded) {
        const Announcement announcement(tree_, {ItemChange::Kind::expanded, this});
        expanded_ = expanded;
    }
}

void CTreeCtrl::itemChanged(Item &item) {
    changed();
    if (observer_ != nullptr) {
        observer_->afterChange({ItemChange::Kind::changed, &item});
    }
}

CTreeCtrl::Item &CTreeCtrl::InsertItem(CString text, Item *parent) {
    auto &siblings = siblingsBelow(parent);
    const int index = static_cast<int>(siblings.size());
    const Announcement announcement(*this, {ItemChange::Kind::inserted, parent, index});
    siblings.push_back(std::make_unique<Item>(*this, parent, index, std::move(text)));
    return *siblings.back();
}

void CTreeCtrl::DeleteItem(Item &item) {
    const int index = item.index_;
    const Announcement announcement(*this, {ItemChange::Kind::removed, item.parent_, index});
    selected_.erase(&item);
    walk(item.children_, [this](Item &below) {
        selected_.erase(&below);
        return true;
    });
    auto &siblings = siblingsBelow(item.parent_);
    siblings.erase(siblings.begin() + index);
    std::for_each(siblings.begin() + index, siblings.end(), [](const auto &sibling) { --sibling->index_; });
}

void CTreeCtrl::DeleteAllItems() {
    const Announcement announcement(*this, {});
    selected_.clear();
    roots_.clear();
}

std::vector<CTreeCtrl::Item *> CTreeCtrl::selectedItems() const {
    std::vector<Item *> selected;
    walk(roots(), [&](Item &item) {
        if (item.isSelected()) {
            selected.push_back(&item);
        }
        return selected.size() < selected_.size();
    });
    return selected;
}

CTreeCtrl::Item *CTreeCtrl::find(const CString &text) const {
    Item *found = nullptr;
    walk(roots(), [&](Item &item) {
        found = item.text() == text ? &item : nullptr;
        return found == nullptr;
    });
    return found;
}

bool CTreeCtrl::setSelection(std::unordered_set<Item *> selected) {
    if (selected == selected_) {
        return false;
    }
    const Announcement announcement(*this, {ItemChange::Kind::selection});
    selected_ = std::move(selected);
    return true;
}

void CTreeCtrl::selectItem(Item &item, bool select) {
    if (select && selection_ == Selection::one) {
        setSelection({&item});
    } else if (item.isSelected() != select) {
        const Announcement announcement(*this, {ItemChange::Kind::selection, &item});
        if (select) {
            selected_.insert(&item);
        } else {
            selected_.erase(&item);
        }
    }
}

bool CTreeCtrl::canBeSeen(const Item &item) const {
    for (const Item *owner = item.parent_; owner != nullptr; owner = owner->parent_) {
        if (!owner->expanded_) {
            return false;
        }
    }
    return true;
}

bool CTreeCtrl::select(const std::vector<Item *> &items) {
    if (!takesEvents() || (selection_ == Selection::one && items.size() > 1) ||
        !std::ranges::all_of(items, [this](const Item *item) { return canBeSeen(*item); })) {
        return false;
    }
    if (setSelection({items.begin(), items.end()}) && handlers_.onSelectionChanged) {
        handlers_.onSelectionChanged();
    }
    return true;
}

bool CTreeCtrl::expand(Item &item, bool open) {
    if (!takesEvents() || !canBeSeen(item) || (item.children_.empty() && !item.mayHaveChildren_)) {
        return false;
    }
    const bool opens = open && !item.expanded_;
    item.setExpanded(open); // before the handler, which may delete the item
    if (opens && handlers_.onExpand) {
        handlers_.onExpand(item);
    }
    return true;
}

bool CTreeCtrl::enterCheck(Item &item, bool check) {
    if (!takesEvents() || !canBeSeen(item) || item.check_ == Check::noBox) {
        return false;
    }
    const Check wanted = check ? Check::checked : Check::unchecked;
    if (item.check_ != wanted) {
        item.setCheck(wanted);
        if (handlers_.onCheck) {
            handlers_.onCheck(item);
        }
    }
    return true;
}

bool CTreeCtrl::activate(Item &item) {
    if (!takesEvents() || !canBeSeen(item)) {
        return false;
    }
    if (handlers_.onActivate) {
        handlers_.onActivate(item);
    }
    return true;
}
