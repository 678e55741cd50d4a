#include "CM/CMSupport/command/CheckOutSteps.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/questions/CCMSyncQuestionDlg.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IPN.h"
#include "CM/host/Reload.h"
#include "CM/host/Utilities.h"

namespace command {

namespace {
constexpr int oneArchiveForTheProject = 2;
} // namespace

bool isSaveWanted() {
    const IProperty *const property =
        CMProperty::getToolProperty(IPN::CMSaveOnCheckOut, nullptr, IProperty::inherited, false);
    return property != nullptr && property->getBool();
}

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

WritableFileQuestion::WritableFileQuestion() {
    CString asks;
    CMProperty::getToolPropertyValue("AskOnCheckoutReadWrite", asks, false);
    asks_ = asks.CompareNoCase("No") != 0;
}

bool WritableFileQuestion::mayOverwrite(const IUnit &unit) const {
    if (!asks_ || !oqFileHasWritePermission(unit.getFullFileName())) {
        return true;
    }
    CCMSyncQuestionDlg question;
    question.SetCancelableOperation(0);
    question.setText(
        resources::format(resources::Text::writableFileQuestion, {unit.getFileName(), unit.getFullFileName()}));
    return question.DoModal() == IDYES;
}

bool WritableFileQuestion::mayOverwrite(const CMArchiveItem &item) const {
    const IUnit *const unit = asks_ ? IUnit::getByFile(item.getFileNameForRepFiles()) : nullptr;
    return unit == nullptr || mayOverwrite(*unit);
}

void selectArchive(const IUnit &unit) {
    if (CMArchive::getArchiveSelection() != oneArchiveForTheProject) {
        CString archive;
        CMProperty::getBatchArchiveRecursive(&unit, archive);
        CMArchive::setMainArchive(archive); // also with an empty text, when the unit has no archive
    }
}

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
