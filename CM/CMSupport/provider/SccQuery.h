// SccQuery: asks the provider for the state of files and stores it in the units, from where the host shows it. In
// all functions `context` is the provider's own, not the record of it. User-interface thread only. If the provider
// crashes, CMProviderFault passes through.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CStringList.h"

class SccQuery {
  public:
    /// Asks for all files in one call. `status` receives a word for each of them, in their order; it belongs to
    /// the caller and must have as many entries. Returns the provider's result; -1 for a null context, without a
    /// call.
    static long query(const CStringList &files, long *status, void *context);

    // None of these reports a failure: the units then keep the state that they have. Without a context, or while
    // states are not on display (CMProperty::getShowCMStatus), the provider is not asked.

    /// Asks for one unit; null is ignored.
    static void queryAndSetStatus(IUnit *unit, void *context);
    /// Asks for all units in one call, or one by one if the property "QuerySCCStatusOneByOne" is true.
    /// Required: after a null entry, each unit gets the state of the file after its own; the last units get 0
    /// (SccQueryOfUnits.ANullEntryShiftsTheStatesAfterIt).
    static void queryAndSetStatus(CMUnitList &units, void *context);
    /// Asks for each unit in a call of its own, front to back.
    static void queryAndSetStatusOneByOne(CMUnitList &units, void *context);
    /// Asks for the units of the items, and for their other files; with a non-zero `recursive` also for the units
    /// below. Items without a unit, and null, are skipped.
    static void queryAndSetStatus(CMArchiveItemList &items, void *context, int recursive);
};
