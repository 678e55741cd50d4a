#include "CM/CMSupport/core/ModelUpdate.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/Reload.h"

namespace core {

IUnit *loadIntoModel(const CString &directory, const CString &fileName) {
    ATMFacade loader(directory);
    IUnit *const unit = loader.addToModel(fileName, 0, 0, 0, false, nullptr);
    CurrentWorkspace *const current = unit == nullptr ? nullptr : CurrentWorkspace::Workspace();
    if (IWorkspace *const workspace = current == nullptr ? nullptr : current->getWorkspace()) {
        workspace->AddToSavedUnitsList(unit);
    }
    return unit;
}

IUnit *reloadUnit(IUnit &unit) {
    if (QuickATMFacade::CanReloadUnit(&unit, 0)) {
        return QuickATMFacade(nullptr, nullptr, nullptr, nullptr).reloadUnit(&unit, 0, 0);
    }
    return loadIntoModel(unit.getOwnDirectory(), unit.getFileName());
}

IUnit *reloadUnitAndRenameFile(IUnit &unit) {
    if (!QuickATMFacade::CanReloadUnit(&unit, 0)) {
        return loadIntoModel(unit.getOwnDirectory(), unit.getFileName());
    }
    QuickATMFacade scope(nullptr, nullptr, nullptr, nullptr);
    const CString oldFileName = unit.getFileNameNoExt();
    const CString oldName = unit.getName();
    IUnit *const newUnit = scope.reloadUnit(&unit, 0, 0);
    renameFileIfNeeded(newUnit, oldName, oldFileName);
    return newUnit;
}

void renameFileIfNeeded(IUnit *unit, const CString &oldName, const CString &oldFileName) {
    if (unit == nullptr || oldFileName != oldName) {
        return; // only a file with its unit's old name is renamed
    }
    const CString name = unit->getName();
    if (name == oldName) {
        return;
    }
    const auto *const owner = dynamic_cast<const IUnit *>(unit->getOwner());
    if (owner == nullptr || owner->keepsPartFileName("") != 0) {
        return;
    }
    if (unit->approveCMRename(name)) {
        unit->setFileName(name);
    }
}

void reportLoadingFailure(const CString &fullFileName, CString &errorText) {
    errorText = resources::format(resources::Text::loadingFailed, {fullFileName});
    CMOutputer::reportLoadingErrror(errorText);
}

} // namespace core
