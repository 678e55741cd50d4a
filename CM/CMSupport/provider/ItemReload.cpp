#include "CM/CMSupport/provider/ItemReload.h"

#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/ModelUpdate.h"
#include "CM/host/Reload.h"

namespace provider {

void reloadItem(ProviderRun &run, const CMArchiveItem &item, OutcomeReport &report) {
    IUnit *const known = IUnit::getByFile(item.getFileNameForRepFiles());
    if (known != nullptr) {
        run.log().write("Performing ATM for the file " + known->getFullFileName());
    }
    const bool isInPlace = known != nullptr && QuickATMFacade::CanReloadUnit(known, 0) &&
                           known->getOwnDirectory() == item.getLocalPath();
    IUnit *const unit = isInPlace ? QuickATMFacade(nullptr, nullptr, nullptr, nullptr).reloadUnit(known, 0, 0)
                                  : core::loadIntoModel(item.getLocalPath(), item.getFileName());
    if (unit != nullptr) {
        report.reloaded(CMOutcome::Reload::content, unit);
        return;
    }
    CString error;
    core::reportLoadingFailure(paths::join(item.getLocalPath(), item.getFileName()), error);
    report.notLoaded(error);
}

} // namespace provider
