#include "orchard/model/Element.h"

#include "orchard/model/Model.h"
#include "orchard/model/Workspace.h"
#include "orchard/properties/PropertyTable.h"

#include <algorithm>

namespace orchard {

struct Element::Details {
    std::string type;
    std::string description;
    ElementId standsFor;
    bool respectMode = false;
};

Element::Element(Kind kind) : kind_(kind) {}
Element::~Element() { HandleSlots::left(*this); }

Element *Element::of(const IDObject *object) { return dynamic_cast<Element *>(const_cast<IDObject *>(object)); }

Element::Details &Element::details() {
    if (details_ == nullptr) {
        details_ = std::make_unique<Details>();
    }
    return *details_;
}

std::string_view Element::type() const { return details_ == nullptr ? std::string_view() : details_->type; }
std::string_view Element::description() const {
    return details_ == nullptr ? std::string_view() : details_->description;
}
ElementId Element::standsFor() const { return details_ == nullptr ? ElementId() : details_->standsFor; }
bool Element::respectMode() const { return details_ != nullptr && details_->respectMode; }
void Element::setType(std::string_view type) { details().type = type; }
void Element::setDescription(std::string_view description) { details().description = description; }
void Element::setStandsFor(const ElementId &id) { details().standsFor = id; }
void Element::setRespectMode(bool respect) { details().respectMode = respect; }

Element &Element::addChild(std::unique_ptr<Element> child, std::size_t index) {
    child->owner_ = this;
    const auto place = children_.begin() + static_cast<std::ptrdiff_t>(std::min(index, children_.size()));
    return **children_.insert(place, std::move(child));
}

std::size_t Element::indexOf(const Element &child) const {
    // Children are mostly asked for in order.
    thread_local std::size_t next = 0;
    const auto same = [&](const auto &owned) { return owned.get() == &child; };
    const auto hinted = children_.begin() + static_cast<std::ptrdiff_t>(std::min(next, children_.size()));
    auto found = std::find_if(hinted, children_.end(), same);
    if (found == children_.end()) {
        found = std::find_if(children_.begin(), hinted, same);
        found = found == hinted ? children_.end() : found;
    }
    next = static_cast<std::size_t>(found - children_.begin()) + 1;
    return next - 1;
}

std::unique_ptr<Element> Element::replaceChild(std::size_t index, std::unique_ptr<Element> child) {
    child->owner_ = this;
    children_[index].swap(child);
    child->owner_ = nullptr;
    return child;
}

std::unique_ptr<Element> Element::takeChild(std::size_t index) {
    std::unique_ptr<Element> taken = std::move(children_[index]);
    children_.erase(children_.begin() + static_cast<std::ptrdiff_t>(index));
    taken->owner_ = nullptr;
    return taken;
}

std::unique_ptr<Element> Element::takeChild(const Element &child) {
    const std::size_t index = indexOf(child);
    return index < children_.size() ? takeChild(index) : nullptr;
}

std::vector<Element::Placed> Element::takeChildren(const std::unordered_set<const Element *> &which) {
    std::vector<Placed> taken;
    std::size_t kept = 0;
    for (std::size_t at = 0; at < children_.size(); ++at) {
        if (which.contains(children_[at].get())) {
            children_[at]->owner_ = nullptr;
            taken.push_back({at, std::move(children_[at])});
        } else {
            children_[kept++].swap(children_[at]);
        }
    }
    children_.resize(kept);
    return taken;
}

void Element::putChildren(std::vector<Placed> placed) {
    std::vector<std::unique_ptr<Element>> all;
    all.reserve(children_.size() + placed.size());
    auto next = placed.begin();
    const auto put = [&] {
        next->element->owner_ = this;
        all.push_back(std::move(next++->element));
    };
    for (auto &child : children_) {
        while (next != placed.end() && next->index <= all.size()) {
            put();
        }
        all.push_back(std::move(child));
    }
    while (next != placed.end()) {
        put();
    }
    children_ = std::move(all);
}

void Element::giveChildrenTo(Element &other) {
    other.children_ = std::move(children_);
    children_.clear();
    for (const auto &child : other.children_) {
        child->owner_ = &other;
    }
}

void Element::takeFacts(Element &other) {
    id_ = other.id_;
    if (model_ != nullptr && name_ != other.name_) {
        model_->noteName();
    }
    name_ = std::move(other.name_);
    details_ = std::move(other.details_);
    setProperties(std::move(other.properties_));
}

UnitElement *Element::saveUnit() const {
    for (Element *element = const_cast<Element *>(this); element != nullptr; element = element->owner_) {
        if (UnitElement *const unit = element->asUnit(); unit != nullptr && unit->isSaveUnit()) {
            return unit;
        }
    }
    return nullptr;
}

bool Element::owns(const Element &other) const {
    const Element *outer = other.owner_;
    while (outer != nullptr && outer != this) {
        outer = outer->owner_;
    }
    return outer != nullptr;
}

IHandle *Element::makeHandle() { return model_ == nullptr ? nullptr : model_->handleTo(*this); }

void Element::setModified(bool modified) {
    modified_ = modified;
    if (modified) {
        if (UnitElement *const unit = saveUnit()) {
            unit->modified_ = true;
        }
    }
}

void Element::changed() {
    setModified(true);
    Workspace::instance().noteChange(object());
}

} // namespace orchard
