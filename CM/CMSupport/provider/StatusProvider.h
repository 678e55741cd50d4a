// StatusProvider: provides the states of units as the provider knows them.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/provider/pvContextStruct.h"
#include "CM/host/IUnit.h"

class StatusProvider {
  public:
    virtual ~StatusProvider() = default;
    /// Returns the unit's provider context, opened if necessary; null if there is none, after telling the user.
    virtual pvContextStruct *contextOf(IUnit &unit) = 0;
    /// Asks the provider for the state of the units and stores it in them. `context` is that of the provider.
    virtual void queryAndSetStatus(CMUnitList &units, void *context) = 0;
};

/// Returns the provider that this process uses.
StatusProvider &statusProvider();
