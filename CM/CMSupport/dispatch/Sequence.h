// The sequence that every operation of the facade goes through, written once. An entry names what is special to
// it.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMTranscation.h"

#include <concepts>

namespace dispatch {

struct Row {
    CMTranscationType type;
    bool checksUnits = false; ///< bars units from the list first
    bool wantsUnits = false;  ///< returns 0 if none is left
};

/// Tells the user that the provider route is not part of this version, and returns 0.
int providerRouteMissing();

/// Opens the transaction, prunes the list, chooses the route and runs that of the two. 0 without touching the list
/// if the transaction isn't valid.
template <class LIST, std::invocable PROVIDER, std::invocable COMMAND>
int run(const Row &row, LIST &list, PROVIDER provider, COMMAND command) {
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
    return CMProperty::useSccCompliantTool() != 0 ? provider() : command();
}

} // namespace dispatch
