#include "CM/CMSupport/questions/WritableFileQuestion.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/questions/CCMSyncQuestionDlg.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/Utilities.h"

WritableFileQuestion::WritableFileQuestion() {
    CString asks;
    CMProperty::getToolPropertyValue(keys::askOnCheckout, asks, false);
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
