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
    return ask(unit.getFileName(), unit.getFullFileName());
}

bool WritableFileQuestion::mayOverwriteFile(const CString &file) const {
    return ask(platform::fileOfPath(file), file);
}

bool WritableFileQuestion::ask(const CString &name, const CString &file) const {
    if (!asks_ || !oqFileHasWritePermission(file)) {
        return true;
    }
    CCMSyncQuestionDlg question;
    question.SetCancelableOperation(0);
    question.setText(resources::format(resources::Text::writableFileQuestion, {name, file}));
    return question.DoModal() == IDYES;
}

bool WritableFileQuestion::mayOverwrite(const CMArchiveItem &item) const {
    const IUnit *const unit = asks_ ? IUnit::getByFile(item.getFileNameForRepFiles()) : nullptr;
    return unit == nullptr || mayOverwrite(*unit);
}
