#include "apps/orchard-cm/operation/ReloadFiles.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IProject.h"
#include "CM/host/Reload.h"

#include <filesystem>

namespace orchard_cm {

namespace {

/// Reloads the unit of the file and returns it as it is then, or null.
IUnit *reload(const std::string &file) {
    // A reload may have replaced units below, so each unit is looked up only when its turn comes.
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

ReloadedFiles reloadFiles(const std::vector<std::string> &files) {
    ReloadedFiles result;
    CMFacade::ATMCallbackFunc()(CMFacade::ATMCallbackFuncParameter());
    for (const auto &file : files) {
        if (!IEmbededFile::IsEmbededFile(file)) {
            (reload(file) != nullptr ? result.read : result.failed).insert(file);
        }
    }
    CMFacade::afterATMCallbackFunc()(CMFacade::afterATMCallbackFuncParameter());
    return result;
}

} // namespace orchard_cm
