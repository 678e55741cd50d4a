#include "CM/CMSupport/dispatch/StatusRefresh.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMTraitFacade.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/RepositoryFiles.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"

namespace dispatch {

bool isStatusRefreshWanted() {
    if (CMProperty::getShowCMStatus() == 0 || CMProperty::getUseSCCtool() == 0) {
        return false;
    }
    CString when;
    CMProperty::getToolPropertyValue(keys::refreshStatus, when, false);
    if (when.CompareNoCase("Ask User") == 0) {
        return notifyUserAndAsk(resources::text(resources::Text::statusRefreshQuestion),
                                MB_YESNO | MB_ICONQUESTION, 0, messageLevelDefault) == IDYES;
    }
    return when.CompareNoCase("Yes") == 0;
}

void refreshStatus(StatusProvider &provider) {
    CMUnitList units;
    pvContextStruct *last = nullptr;
    IUnitIterator files = walkRepositoryFiles();
    for (IUnit *unit = files.first(); unit != nullptr; unit = files.next()) {
        if (!isRepositoryFileForCM(*unit)) {
            continue;
        }
        pvContextStruct *const context = provider.contextOf(*unit);
        if (context == nullptr) {
            break; // required: StatusRefresh.TheFirstUnitWithoutAContextEndsTheWalk
        }
        last = context;
        units.AddTail(unit);
    }
    if (last != nullptr) {
        provider.queryAndSetStatus(units, last->getpvContextPtr());
    }
}

void refreshStatusIfWanted(StatusProvider &provider) {
    if (isStatusRefreshWanted()) {
        refreshStatus(provider);
    }
}

} // namespace dispatch

CMTraitFacade theCMFacade;

CMTraitFacade::~CMTraitFacade() = default;

void CMTraitFacade::RefreshCMStatus() { dispatch::refreshStatusIfWanted(statusProvider()); }
