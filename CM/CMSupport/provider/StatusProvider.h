// StatusProvider: gives the state that the provider knows of units.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/provider/pvContextStruct.h"
#include "CM/host/IUnit.h"

class StatusProvider {
  public:
    virtual ~StatusProvider() = default;
    /// The provider context of the unit, opened if need be; null if there is none, which was reported to the user.
    virtual pvContextStruct *contextOf(IUnit &unit) = 0;
    /// Asks the provider for the state of the units and stores it in them. `context` is that of the provider.
    virtual void queryAndSetStatus(CMUnitList &units, void *context) = 0;
};

/// The provider that this process is bound to.
StatusProvider &statusProvider();
