#include "CM/host/Reload.h"
#include "orchard/reload/ReloadReport.h"
#include "orchard/storage/UnitReplacement.h"

QuickATMFacade::QuickATMFacade(Callback before, void *beforeArgument, Callback after, void *afterArgument)
    : after_(after), afterArgument_(afterArgument) {
    if (before != nullptr) {
        before(beforeArgument);
    }
}

QuickATMFacade::~QuickATMFacade() {
    if (after_ != nullptr) {
        after_(afterArgument_);
    }
}

// A file from the archive is read in place like one that changed there. A stub has no contents to replace: its
// file is loaded as a new unit.
bool QuickATMFacade::CanReloadUnit(const IUnit *unit, int /*flag*/) {
    const auto *const element = orchard::Element::of(unit);
    const auto *const state = element == nullptr ? nullptr : element->asUnit();
    return state != nullptr && state->model() != nullptr && state->isSaveUnit() &&
           !state->is(orchard::UnitElement::stub);
}

IUnit *QuickATMFacade::reloadUnit(IUnit *unit, int flag, int) {
    if (!CanReloadUnit(unit, flag)) {
        return nullptr;
    }
    const orchard::Replacement replacement = orchard::reread(*orchard::Element::of(unit)->asUnit());
    orchard::reportReloadProblems(replacement.problems);
    orchard::reportReloadWarnings(replacement.warnings);
    return replacement.unit == nullptr ? nullptr : &replacement.unit->unit();
}
