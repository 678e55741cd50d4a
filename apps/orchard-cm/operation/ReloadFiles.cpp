#include "apps/orchard-cm/operation/ReloadFiles.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IProject.h"
#include "CM/host/Reload.h"

#include <filesystem>

namespace orchard_cm {

namespace {

/// The unit as it is after the reload, or null.
IUnit *reload(const std::string &file) {
    // A reload may have replaced units that lie below, so each is looked up when its turn comes.
    if (IUnit *const unit = IUnit::getByFile(file); unit != nullptr && QuickATMFacade::CanReloadUnit(unit, 0)) {
        QuickATMFacade quick(nullptr, nullptr, nullptr, nullptr);
        return quick.reloadUnit(unit, 0, 0);
    }
    ATMFacade loader(std::filesystem::path(file).parent_path().string());
    IUnit *const loaded = loader.addToModel(file, 0, 0, 0, false, nullptr);
    CurrentWorkspace *const workspace = CurrentWorkspace::Workspace();
    if (loaded != nullptr && workspace != nullptr && workspace->getWorkspace() != nullptr) {
        workspace->getWorkspace()->AddToSavedUnitsList(loaded);
    }
    return loaded;
}

} // namespace

std::unordered_set<std::string> reloadFiles(const std::vector<std::string> &files) {
    std::unordered_set<std::string> failed;
    CMFacade::ATMCallbackFunc()(CMFacade::ATMCallbackFuncParameter());
    for (const auto &file : files) {
        if (!IEmbededFile::IsEmbededFile(file) && reload(file) == nullptr) {
            failed.insert(file);
        }
    }
    CMFacade::afterATMCallbackFunc()(CMFacade::afterATMCallbackFuncParameter());
    return failed;
}

} // namespace orchard_cm
