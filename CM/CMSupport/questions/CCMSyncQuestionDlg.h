// Asks whether to overwrite a unit that may contain changes of the user. An answer can hold for the rest of a
// command.
#pragma once

#include "CM/CMSupport/questions/CCMModalDialog.h"
#include "CM/platform/CString.h"
#include "CM/platform/CWnd.h"

class CCMSyncQuestionDlg : public CCMModalDialog {
  public:
    /// The last answer: "yes", "yestoall", "no", "notoall" or "cancel". Shared by all instances; emptied when the
    /// last CMAskOnCheckoutGuard ends. Without a guard it remains until it is emptied.
    static CString m_response;

    explicit CCMSyncQuestionDlg(CWnd *parent = nullptr);

    /// Sets the text of the question.
    void setText(CString question) { text_.setCaption(std::move(question)); }
    /// 0 disables the Cancel button; the initial value is 1.
    void SetCancelableOperation(int flag) { cancelable_ = flag; }

    /// Returns IDYES, IDNO or IDCANCEL. After "yestoall" or "notoall" returns that answer without showing
    /// anything. If the dialog ends without an answer, the last answer counts again; if there is none, returns
    /// IDYES. If nobody can be asked, returns IDNO and says so in the CM output window.
    int DoModal();

  protected:
    void OnInitDialog() override;
    int OnNotAnswered() override;

  private:
    void answer(const char *response, int result);

    CIcon icon_{*this, "icon"};
    CStatic text_{*this, "text"};
    CButton yes_;
    CButton yesToAll_;
    CButton no_;
    CButton noToAll_;
    CButton cancel_;
    int cancelable_ = 1;
};
