// Maps identifiers to handles: a handle refers to an identifier, and returns whichever object has it now.
#pragma once

#include "CM/host/IHandle.h"
#include "orchard/model/Element.h"

#include <unordered_map>

namespace orchard {

class HandleSlots {
  public:
    HandleSlots() = default;
    /// Remaining handles return null from then on.
    ~HandleSlots();
    HandleSlots(const HandleSlots &) = delete;
    HandleSlots &operator=(const HandleSlots &) = delete;

    /// Returns a handle, to be released with release(). All handles to one identifier are the same object.
    [[nodiscard]] IHandle *handleTo(Element &element);
    /// Call when an element enters or leaves the model.
    void entered(Element &element);
    static void left(Element &element);

  private:
    friend class HandleSlot;
    /// The slots that have no element. A slot with an element is reachable only from that element, so handles need
    /// no look-up.
    std::unordered_map<ElementId, HandleSlot *> empty_;
};

} // namespace orchard
