#include "CM/CMSupport/questions/CCMSyncQuestionDlg.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/resources/Format.h"

using resources::Text;
using resources::text;

CString CCMSyncQuestionDlg::m_response;

CCMSyncQuestionDlg::CCMSyncQuestionDlg(CWnd * /*parent*/)
    : CCMModalDialog("CCMSyncQuestionDlg"),
      yes_(*this, "yes", text(Text::buttonYes), [this] { answer("yes", IDYES); }),
      yesToAll_(*this, "yesToAll", text(Text::buttonYesToAll), [this] { answer("yestoall", IDYES); }),
      no_(*this, "no", text(Text::buttonNo), [this] { answer("no", IDNO); }),
      noToAll_(*this, "noToAll", text(Text::buttonNoToAll), [this] { answer("notoall", IDNO); }),
      cancel_(*this, "cancel", text(Text::buttonCancel), [this] { answer("cancel", IDCANCEL); }) {
    SetWindowText(text(Text::questionTitle));
    no_.setDefault(true);
}

void CCMSyncQuestionDlg::answer(const char *response, int result) {
    m_response = response;
    EndDialog(result);
}

void CCMSyncQuestionDlg::OnInitDialog() {
    cancel_.EnableWindow(cancelable_ != 0);
    icon_.SetIcon(CIcon::Kind::warning);
}

int CCMSyncQuestionDlg::DoModal() {
    if (m_response == "yestoall") {
        return IDYES;
    }
    if (m_response == "notoall") {
        return IDNO;
    }
    if (CCMModalDialog::DoModal() == IDNO || m_response == "no" || m_response == "notoall") {
        return IDNO;
    }
    if (m_response == "cancel") {
        return IDCANCEL;
    }
    // Required: any other response counts as yes, even an empty one. A user can't cause that by closing the
    // window, which presses Cancel or is refused. Test: SyncQuestion.AnyOtherResponseCountsAsYes.
    return IDYES;
}

int CCMSyncQuestionDlg::OnNotAnswered() {
    CMOutputer::writeToCMOutputWnd(resources::format(Text::questionNotAnswered, {text_.caption()}));
    return IDNO; // the file stays as it is
}
