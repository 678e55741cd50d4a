#include "CM/CMSupport/questions/CCMSyncQuestionDlg.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/Environment.h"

using resources::Text;
using resources::text;

CString CCMSyncQuestionDlg::m_response;

CCMSyncQuestionDlg::CCMSyncQuestionDlg(CWnd * /*parent*/)
    : CDialog("CCMSyncQuestionDlg"), yes_(*this, "yes", text(Text::buttonYes), [this] { answer("yes", IDYES); }),
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
    IAbsEnvironmentInterface *const user = IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface();
    if (CDialog::DoModal(user == nullptr ? nullptr : user->dialogDriver()) == dialogNotAnswered) {
        // Nobody can be asked, so the file stays as it is: No is the answer that loses nothing.
        CMOutputer::writeToCMOutputWnd(resources::format(Text::questionNotAnswered, {text_.caption()}));
        return IDNO;
    }
    if (m_response == "no" || m_response == "notoall") {
        return IDNO;
    }
    if (m_response == "cancel") {
        return IDCANCEL;
    }
    // Whatever else the response is counts as yes, deliberately: also the empty text of a dialog that was closed,
    // unless the answer of an earlier question stands and has decided above.
    return IDYES;
}
