// Handles point at a slot per identifier, not at an object: whatever object bears the identifier stands in it.
#pragma once

#include "CM/host/IHandle.h"
#include "orchard/model/Element.h"

#include <memory>
#include <unordered_map>

namespace orchard {

class HandleSlots {
  public:
    HandleSlots() = default;
    /// Handles that are still held answer null from then on.
    ~HandleSlots();
    HandleSlots(const HandleSlots &) = delete;
    HandleSlots &operator=(const HandleSlots &) = delete;

    /// A new handle; it gives itself back with release().
    [[nodiscard]] IHandle *handleTo(Element &element);
    /// An element has come into the model, or leaves it.
    void entered(Element &element);
    void left(Element &element);

  private:
    friend class SlotHandle;
    struct Slot {
        HandleSlots *home; ///< null once the model is gone
        ElementId id;
        Element *element;
        std::size_t handles;
    };
    static void released(Slot *slot);

    std::unordered_map<ElementId, Slot *> slots_;
};

} // namespace orchard
