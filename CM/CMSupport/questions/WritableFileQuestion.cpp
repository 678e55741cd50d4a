#include "CM/CMSupport/questions/WritableFileQuestion.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/questions/CCMSyncQuestionDlg.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/Utilities.h"
#include "CM/platform/PathText.h"

WritableFileQuestion::WritableFileQuestion() {
    CString asks;
    CMProperty::getToolPropertyValue(keys::askOnCheckout, asks, false);
    asks_ = asks.CompareNoCase("No") != 0;
}

bool WritableFileQuestion::mayOverwrite(const IUnit &unit) const {
    return mayOverwrite(unit, unit.getFullFileName());
}

bool WritableFileQuestion::mayOverwriteFile(const CString &file) const {
    return ask(file, platform::fileOfPath(file), file);
}

bool WritableFileQuestion::mayOverwrite(const IUnit &unit, const CString &file) const {
    return ask(file, unit.getFileName(), unit.getFullFileName());
}

bool WritableFileQuestion::ask(const CString &file, const CString &name, const CString &fullName) const {
    if (!asks_ || !oqFileHasWritePermission(file)) {
        return true;
    }
    CCMSyncQuestionDlg question;
    question.SetCancelableOperation(0);
    question.setText(resources::format(resources::Text::writableFileQuestion, {name, fullName}));
    return question.DoModal() == IDYES;
}

bool WritableFileQuestion::mayOverwrite(const CMArchiveItem &item) const {
    const IUnit *const unit = asks_ ? IUnit::getByFile(item.getFileNameForRepFiles()) : nullptr;
    return unit == nullptr || mayOverwrite(*unit);
}

bool WritableFileQuestion::mayOverwrite(const CMArchiveItem &item, const CString &file) const {
    const IUnit *const unit = asks_ ? IUnit::getByFile(item.getFileNameForRepFiles()) : nullptr;
    return unit == nullptr || mayOverwrite(*unit, file);
}
