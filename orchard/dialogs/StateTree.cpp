#include "CM/host/CurrentWorkspace.h"
#include "CM/host/DialogHelpers.h"
#include "CM/host/IProject.h"

namespace {

/// The state images in the order of their indices. Index 0 means no image.
enum StateImage { none, notControlled, controlled, elsewhere, byAnother, checkedOut, deleted };
constexpr const char *imageNames[] = {
    "none",        "not controlled", "controlled", "checked out elsewhere", "checked out by another",
    "checked out", "deleted"};

// The bits of a unit's state.
constexpr long invalidState = -1;
constexpr long isControlled = 1;
constexpr long isCheckedOut = 2;
constexpr long isOutToAnother = 4;
constexpr long isDeleted = 64;
constexpr long isOutElsewhere = 4096;

StateImage imageOf(long state) {
    const auto has = [state](long bit) { return (state & bit) != 0; };
    return !has(isControlled)    ? notControlled
           : has(isDeleted)      ? deleted
           : has(isCheckedOut)   ? checkedOut
           : has(isOutToAnother) ? byAnother
           : has(isOutElsewhere) ? elsewhere
                                 : controlled;
}

} // namespace

void CMStateAwareTreeCtrl::SetUpStateImageList() {
    stateImages_.RemoveAll();
    for (const char *const name : imageNames) {
        stateImages_.Add(name);
    }
}

int CMStateAwareTreeCtrl::GetCMStateImageInd(const IUnit *unit) {
    const IProject *const project = unit == nullptr ? nullptr : CurrentWorkspace::GetActiveProject();
    if (project == nullptr || !project->showCMStatus(IProject::isUsingTSV())) {
        return none;
    }
    const long state = unit->getCMState();
    return state == invalidState ? none : imageOf(state);
}
