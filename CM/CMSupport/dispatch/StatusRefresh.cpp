#include "CM/CMSupport/dispatch/StatusRefresh.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMTraitFacade.h"
#include "CM/CMSupport/core/RepositoryFiles.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"

namespace dispatch {

bool isStatusRefreshWanted() {
    if (CMProperty::getShowCMStatus() == 0 || CMProperty::getUseSCCtool() == 0) {
        return false;
    }
    CString when;
    CMProperty::getToolPropertyValue("RefreshCMStatusAtProjectOpenup", when, false);
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
            break;
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

namespace {

/// The provider route is not part of this version, so that no unit has a context.
class NoProvider : public dispatch::StatusProvider {
  public:
    pvContextStruct *contextOf(IUnit & /*unit*/) override { return nullptr; }
    void queryAndSetStatus(CMUnitList & /*units*/, void * /*context*/) override {}
};

} // namespace

CMTraitFacade theCMFacade;

CMTraitFacade::~CMTraitFacade() = default;

void CMTraitFacade::RefreshCMStatus() {
    NoProvider provider;
    dispatch::refreshStatusIfWanted(provider);
}
