#include "CM/CMSupport/command/BatchSteps.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMProperty.h"

namespace command {

namespace {
constexpr int oneArchiveForTheProject = 2;
} // namespace

bool saveModel() {
    const CMFacade::SaveCallback save = CMFacade::saveCallbackFunc();
    if (save == nullptr) {
        return false;
    }
    save();
    return true;
}

void openReloads() { CMFacade::ATMCallbackFunc()(CMFacade::ATMCallbackFuncParameter()); }

void closeReloads() { CMFacade::afterATMCallbackFunc()(CMFacade::afterATMCallbackFuncParameter()); }

void selectArchive(const IUnit &unit) {
    if (CMArchive::getArchiveSelection() != oneArchiveForTheProject) {
        CString archive;
        CMProperty::getBatchArchiveRecursive(&unit, archive);
        CMArchive::setMainArchive(archive); // also with an empty text, when the unit has no archive
    }
}

} // namespace command
