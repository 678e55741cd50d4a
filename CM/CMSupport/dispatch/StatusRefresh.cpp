#include "CM/CMSupport/dispatch/StatusRefresh.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMTraitFacade.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Iterators.h"
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

bool countsForStatus(const IUnit &unit) {
    if (unit.isReference() || dynamic_cast<const IWorkspace *>(&unit) != nullptr) {
        return false;
    }
    if (dynamic_cast<const IEmbededFile *>(&unit) != nullptr) {
        const IUnit *const holder = unit.getSaveUnit();
        return holder == nullptr || !holder->isReference();
    }
    const auto *const subsystem = dynamic_cast<const ISubsystem *>(&unit);
    return subsystem == nullptr || !subsystem->isHiddenFromCM();
}

void refreshStatus(StatusProvider &provider) {
    CMUnitList units;
    pvContextStruct *last = nullptr;
    IUnitIterator files(*IUnit::getRepositoryFiles());
    for (IUnit *unit = files.first(); unit != nullptr; unit = files.next()) {
        if (!countsForStatus(*unit)) {
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
    if (dispatch::isStatusRefreshWanted()) {
        NoProvider provider;
        dispatch::refreshStatus(provider);
    }
}
