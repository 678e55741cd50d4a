#include "CM/platform/dialog/CTreeCtrl.h"

#include <algorithm>
#include <ranges>
#include <unordered_set>

namespace {

// Owners before what they own, siblings in their order. `visit` says whether to go on.
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

CTreeCtrl::Item &CTreeCtrl::InsertItem(CString text, Item *parent) {
    auto item = std::make_unique<Item>();
    item->text = std::move(text);
    item->parent_ = parent;
    auto &siblings = parent == nullptr ? top_.children_ : parent->children_;
    siblings.push_back(std::move(item));
    return *siblings.back();
}

void CTreeCtrl::DeleteItem(Item &item) {
    auto &siblings = item.parent_ == nullptr ? top_.children_ : item.parent_->children_;
    std::erase_if(siblings, [&item](const auto &sibling) { return sibling.get() == &item; });
}

std::vector<CTreeCtrl::Item *> CTreeCtrl::selectedItems() const {
    std::vector<Item *> selected;
    walk(roots(), [&selected](Item &item) {
        if (item.selected) {
            selected.push_back(&item);
        }
        return true;
    });
    return selected;
}

CTreeCtrl::Item *CTreeCtrl::find(const CString &text) const {
    Item *found = nullptr;
    walk(roots(), [&](Item &item) {
        found = item.text == text ? &item : nullptr;
        return found == nullptr;
    });
    return found;
}

void CTreeCtrl::selectItem(Item &item, bool select) {
    if (select && selection_ == Selection::one) {
        walk(roots(), [](Item &other) {
            other.selected = false;
            return true;
        });
    }
    item.selected = select;
}

bool CTreeCtrl::canBeSeen(const Item &item) const {
    for (const Item *owner = item.parent_; owner != nullptr; owner = owner->parent_) {
        if (!owner->expanded) {
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
    const std::unordered_set<const Item *> wanted(items.begin(), items.end());
    bool changed = false;
    walk(roots(), [&](Item &item) {
        const bool select = wanted.contains(&item);
        changed |= item.selected != select;
        item.selected = select;
        return true;
    });
    if (changed && handlers_.onSelectionChanged) {
        handlers_.onSelectionChanged();
    }
    return true;
}

bool CTreeCtrl::expand(Item &item, bool open) {
    if (!takesEvents() || !canBeSeen(item) || (item.children_.empty() && !item.mayHaveChildren)) {
        return false;
    }
    if (open && !item.expanded) {
        item.expanded = true; // before the handler, which may delete the item
        if (handlers_.onExpand) {
            handlers_.onExpand(item);
        }
    } else {
        item.expanded = open;
    }
    return true;
}

bool CTreeCtrl::enterCheck(Item &item, bool check) {
    if (!takesEvents() || !canBeSeen(item) || item.check == Check::noBox) {
        return false;
    }
    const Check wanted = check ? Check::checked : Check::unchecked;
    if (item.check != wanted) {
        item.check = wanted;
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
