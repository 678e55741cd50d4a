// The sequence that every operation of the facade goes through, written once. An entry names what is special to
// it.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMTranscation.h"
#include "CM/host/CurrentWorkspace.h"

#include <concepts>

namespace dispatch {

struct Row {
    CMTranscationType type;
    bool checksUnits = false; ///< bars units from the list first
    bool wantsUnits = false;  ///< returns 0 if none is left
    /// Applies the reloaded units to the other open projects at the end, whatever the operation returned.
    bool appliesSavedUnits = false;
};

/// Tells the user that the provider route is not part of this version, and returns 0.
int providerRouteMissing();

/// Whether the route is the provider's.
inline bool isProviderRoute() { return CMProperty::useSccCompliantTool() != 0; }

/// For an operation that chooses its way itself: opens the transaction, prunes the list, and calls `work`. 0
/// without touching the list if the transaction isn't valid.
template <class LIST, std::invocable WORK> int within(const Row &row, LIST &list, WORK work) {
    const CMTranscation transaction(nullptr, 1, row.type, "");
    if (!transaction.isValidTranscation()) {
        return 0;
    }
    if constexpr (std::same_as<LIST, CMUnitList>) {
        if (row.checksUnits) {
            CMTranscation::checkUnitsForOperation(list);
        }
    }
    if (row.wantsUnits && list.IsEmpty()) {
        return 0;
    }
    const int result = work();
    if (row.appliesSavedUnits) {
        CurrentWorkspace::ApplySavedUnitsListToNonActiveProjects();
    }
    return result;
}

/// The same, for an operation that gets no list.
template <std::invocable WORK> int within(CMTranscationType type, WORK work) {
    CMUnitList none;
    return within({.type = type}, none, work);
}

/// The same, with the route chosen by the project: runs that of the two.
template <class LIST, std::invocable PROVIDER, std::invocable COMMAND>
int run(const Row &row, LIST &list, PROVIDER provider, COMMAND command) {
    return within(row, list, [&] { return isProviderRoute() ? provider() : command(); });
}

} // namespace dispatch
