// Completes a partly loaded model.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"

class IDObject;

class ORC_HOST_API LoadOnDemandManager {
  public:
    virtual ~LoadOnDemandManager() = default;
    /// The manager, or null in a host that always loads complete models.
    [[nodiscard]] static LoadOnDemandManager *instance();
    /// Loads everything below `object` that isn't loaded yet, showing `text` meanwhile. Returns non-zero if all of
    /// it is loaded afterwards.
    virtual int completeLoadScopeWithDialog(IDObject *object, const CString &text, int flag) = 0;
};
