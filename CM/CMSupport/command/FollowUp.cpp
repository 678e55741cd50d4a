#include "CM/CMSupport/command/FollowUp.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/Reload.h"

namespace command {

void updateHeader(IUnit &unit) {
    unit.updateCMHeader(); // a file that can't be read leaves the header as it was, and is no failure here
}

void updateMode(IUnit &unit) { unit.updateMode(""); }

IUnit *loadIntoModel(const CString &directory, const CString &fileName) {
    ATMFacade loader(directory);
    IUnit *const unit = loader.addToModel(fileName, 0, 0, 0, false, nullptr);
    CurrentWorkspace *const current = unit == nullptr ? nullptr : CurrentWorkspace::Workspace();
    if (IWorkspace *const workspace = current == nullptr ? nullptr : current->getWorkspace()) {
        workspace->AddToSavedUnitsList(unit);
    }
    return unit;
}

void reportLoadingFailure(const CString &fullFileName, CString &errorText) {
    errorText = resources::format(resources::Text::loadingFailed, {fullFileName});
    CMOutputer::reportLoadingErrror(errorText);
}

} // namespace command
