#include "orchard/model/HandleSlots.h"

#include <cstddef>

namespace orchard {

class HandleSlot final : public IHandle {
  public:
    HandleSlot(HandleSlots &home, Element &element) : home_(&home), id_(element.id()) { fill(element); }

    [[nodiscard]] IDObject *doGetObject() const override {
        return element_ == nullptr ? nullptr : &element_->object();
    }
    // An element leaves its slot before it is destroyed.
    [[nodiscard]] IDObject *doGetSafeObject() const override { return doGetObject(); }
    void release() override {
        if (--handles_ > 0) {
            return;
        }
        if (element_ != nullptr) {
            element_->setSlot(nullptr);
        } else if (home_ != nullptr) {
            home_->empty_.erase(id_);
        }
        delete this;
    }

    HandleSlot &oneMore() {
        ++handles_;
        return *this;
    }
    void fill(Element &element) {
        element_ = &element;
        element.setSlot(this);
    }
    void clear() {
        element_->setSlot(nullptr);
        element_ = nullptr;
        home_->empty_.emplace(id_, this);
    }
    void loseHome() { home_ = nullptr; }

  private:
    ~HandleSlot() override = default;

    HandleSlots *home_; ///< null once the model is gone
    Element *element_ = nullptr;
    std::size_t handles_ = 0;
    ElementId id_;
};

HandleSlots::~HandleSlots() {
    for (const auto &[id, slot] : empty_) {
        slot->loseHome();
    }
}

IHandle *HandleSlots::handleTo(Element &element) {
    HandleSlot *slot = element.slot();
    if (slot == nullptr) {
        entered(element); // an earlier handle may have left an empty slot
        slot = element.slot();
    }
    if (slot == nullptr) {
        slot = new HandleSlot(*this, element); // deletes itself when the last handle is released
    }
    return &slot->oneMore();
}

void HandleSlots::entered(Element &element) {
    if (empty_.empty()) {
        return;
    }
    if (const auto found = empty_.find(element.id()); found != empty_.end()) {
        found->second->fill(element);
        empty_.erase(found);
    }
}

void HandleSlots::left(Element &element) {
    if (HandleSlot *const slot = element.slot()) {
        slot->clear();
    }
}

} // namespace orchard
