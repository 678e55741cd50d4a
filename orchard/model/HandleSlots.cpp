#include "orchard/model/HandleSlots.h"

namespace orchard {

class SlotHandle final : public IHandle {
  public:
    explicit SlotHandle(HandleSlots::Slot *slot) : slot_(slot) {}
    [[nodiscard]] IDObject *doGetObject() const override {
        return slot_->element == nullptr ? nullptr : &slot_->element->object();
    }
    // An element leaves its slot before it is taken down.
    [[nodiscard]] IDObject *doGetSafeObject() const override { return doGetObject(); }
    void release() override {
        HandleSlots::released(slot_);
        delete this;
    }

  private:
    ~SlotHandle() override = default;
    HandleSlots::Slot *slot_;
};

HandleSlots::~HandleSlots() {
    for (const auto &[id, slot] : slots_) {
        slot->element = nullptr;
        slot->home = nullptr;
    }
}

IHandle *HandleSlots::handleTo(Element &element) {
    Slot *&slot = slots_[element.id()];
    if (slot == nullptr) {
        slot = std::make_unique<Slot>(Slot{this, element.id(), &element, 0}).release();
    }
    slot->element = &element;
    ++slot->handles;
    element.setHasSlot(true);
    return new SlotHandle(slot);
}

void HandleSlots::entered(Element &element) {
    if (slots_.empty()) {
        return;
    }
    if (const auto found = slots_.find(element.id()); found != slots_.end()) {
        found->second->element = &element;
        element.setHasSlot(true);
    }
}

void HandleSlots::left(Element &element) {
    if (!element.hasSlot()) {
        return;
    }
    element.setHasSlot(false);
    const auto found = slots_.find(element.id());
    if (found != slots_.end() && found->second->element == &element) {
        found->second->element = nullptr;
    }
}

void HandleSlots::released(Slot *slot) {
    if (--slot->handles > 0) {
        return;
    }
    if (slot->home != nullptr) {
        slot->home->slots_.erase(slot->id);
    }
    delete slot;
}

} // namespace orchard
