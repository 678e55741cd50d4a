// Handles stand for an identifier, not for an object: whatever object bears the identifier is what they give.
#pragma once

#include "CM/host/IHandle.h"
#include "orchard/model/Element.h"

#include <unordered_map>

namespace orchard {

class HandleSlots {
  public:
    HandleSlots() = default;
    /// Handles that are still held answer null from then on.
    ~HandleSlots();
    HandleSlots(const HandleSlots &) = delete;
    HandleSlots &operator=(const HandleSlots &) = delete;

    /// A handle, to be given back with release(). All handles to one identifier are the same object.
    [[nodiscard]] IHandle *handleTo(Element &element);
    /// An element has come into the model, or leaves it.
    void entered(Element &element);
    static void left(Element &element);

  private:
    friend class HandleSlot;
    /// The slots that no element stands in. The others are known to their elements alone, so that a handle costs
    /// no look-up.
    std::unordered_map<ElementId, HandleSlot *> empty_;
};

} // namespace orchard
