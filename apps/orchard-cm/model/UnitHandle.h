// Defines UnitHandle, a reference to a unit that survives reloads and is released automatically.
#pragma once

#include "CM/host/IHandle.h"
#include "CM/host/IUnit.h"

#include <memory>

namespace orchard_cm {

class UnitHandle {
  public:
    explicit UnitHandle(IUnit &unit) : handle_(unit.getHandle()) {}

    /// Returns the unit as it is now, or null if it no longer exists.
    [[nodiscard]] IUnit *unit() const {
        return handle_ == nullptr ? nullptr : dynamic_cast<IUnit *>(handle_->doGetSafeObject());
    }

  private:
    struct Release {
        void operator()(IHandle *handle) const { handle->release(); }
    };
    std::unique_ptr<IHandle, Release> handle_;
};

} // namespace orchard_cm
