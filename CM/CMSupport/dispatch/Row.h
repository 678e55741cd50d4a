// Describes one operation of the facade, and runs it in the steps that all of them share.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMTranscation.h"
#include "CM/host/CurrentWorkspace.h"

namespace dispatch {

/// ARGS are the parameters of the operation and of its two forms.
template <class... ARGS> struct Row {
    using Form = int (*)(ARGS...);

    CMTranscationType type;
    bool check;                     ///< removes the units on which the operation is not allowed from the list
    bool count;                     ///< returns 0 if no unit is left
    Form provider;                  ///< null: the command form runs on both routes
    Form command;                   ///< null: the provider form runs on both routes
    bool appliesSavedUnits = false; ///< applies reloaded units to the other open projects, even after a failure

    /// Runs the operation. Returns the result of the form; 0, with unchanged lists, if the transaction isn't
    /// valid.
    int run(ARGS... args) const {
        const CMTranscation transaction(nullptr, 1, type, "");
        if (!transaction.isValidTranscation()) {
            return 0;
        }
        if (check) {
            checkUnits(args...);
        }
        if (count && hasNoUnits(args...)) {
            return 0;
        }
        const int result = form()(args...);
        if (appliesSavedUnits) {
            CurrentWorkspace::ApplySavedUnitsListToNonActiveProjects();
        }
        return result;
    }

  private:
    static void checkUnits(CMUnitList &units, auto &...) { CMTranscation::checkUnitsForOperation(units); }
    static void checkUnits(auto &...) {}
    static bool hasNoUnits(CMUnitList &units, auto &...) { return units.IsEmpty(); }
    static bool hasNoUnits(auto &...) { return false; }

    [[nodiscard]] Form form() const {
        if (provider == nullptr || command == nullptr) {
            return provider == nullptr ? command : provider; // on both routes
        }
        return CMProperty::useSccCompliantTool() != 0 ? provider : command;
    }
};

} // namespace dispatch
