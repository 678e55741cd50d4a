// Reads those single values of CMProperty that need interpretation.
#include "CM/CMSupport/core/CMProperty.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/CurrentWorkspace.h"

int CMProperty::showCMStatus = 0;
CString CMProperty::customButtonCmdVal;
CString CMProperty::customButtonImgVal;

namespace {

bool hasText(const IProperty *property) { return property != nullptr && !property->getValue().IsEmpty(); }

} // namespace

bool CMProperty::isPre40Compatible() {
    CString value;
    return getToolPropertyValue(keys::treeRepository, value, false) != 0 && !value.IsEmpty();
}

CString CMProperty::getWorkingDir() {
    const IProject *project = CurrentWorkspace::GetActiveProject();
    if (project == nullptr) {
        return {};
    }
    return isPre40Compatible() ? project->getProjectFileDirectory() : project->getOwnDirectory();
}

int CMProperty::getShowCMStatus() {
    if (const IProject *project = CurrentWorkspace::GetActiveProject()) {
        showCMStatus = project->showCMStatus(IProject::isUsingTSV()) ? 1 : 0;
    }
    return showCMStatus;
}

bool CMProperty::CheckCustomButton() {
    return hasText(findProjectProperty("CustomButton", "CustomButtonCmd")) &&
           hasText(findProjectProperty("CustomButton", "CustomButtonImg"));
}

int CMProperty::closeProjectNeeded() { return hasText(findProviderProperty(keys::projName)) ? 0 : 1; }

int CMProperty::getSccArchiveRecursive(const IUnit *unit, CString &projName, CString &auxPath) {
    if (unit != nullptr && unit->getSccArchiveRecursive(projName, auxPath) != 0) {
        return 1;
    }
    const IProperty *name = findProviderProperty(keys::projName);
    if (name == nullptr) {
        return 0;
    }
    projName = name->getValue();
    if (const IProperty *path = findProviderProperty(keys::auxProjPath)) {
        auxPath = path->getValue();
    }
    return projName.IsEmpty() ? 0 : 1;
}

int CMProperty::getBatchArchiveRecursive(const IUnit *unit, CString &archive) {
    if (unit != nullptr && unit->getBatchArchiveRecursive(archive) != 0) {
        return 1;
    }
    archive = CMArchive::getMainArchive();
    return archive.IsEmpty() ? 0 : 1;
}

short CMProperty::saveOnCheckout(short request) {
    static short saveFlagSCC = 1;
    if (request == 0 || request == 1) {
        saveFlagSCC = request;
    }
    return saveFlagSCC;
}

bool CMProperty::FileNeedsATM(const CMArchiveItem *item) {
    return item != nullptr && !IEmbededFile::IsEmbededFile(item->getFileNameForRepFiles());
}
