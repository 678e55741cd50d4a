// CCMSyncQuestionDlg: whether a unit that may hold changes of its own is to be overwritten, with answers that can
// hold for the rest of a command.
#pragma once

#include "CM/CMSupport/questions/CCMModalDialog.h"
#include "CM/platform/CString.h"
#include "CM/platform/CWnd.h"

class CCMSyncQuestionDlg : public CCMModalDialog {
  public:
    /// The last answer: "yes", "yestoall", "no", "notoall" or "cancel". Shared by all instances; emptied when the
    /// last CMAskOnCheckoutGuard ends. Without a guard it stands until something empties it.
    static CString m_response;

    explicit CCMSyncQuestionDlg(CWnd *parent = nullptr);

    /// The question itself.
    void setText(CString question) { text_.setCaption(std::move(question)); }
    /// With 0 the Cancel button is disabled; 1 at the start.
    void SetCancelableOperation(int flag) { cancelable_ = flag; }

    /// IDYES, IDNO or IDCANCEL. An earlier "yestoall" or "notoall" answers without showing anything. A dialog that
    /// ends without one of the five answers counts as IDYES, unless the answer of an earlier question is still
    /// there, which then counts again. Where nobody can be asked it is IDNO, which the CM output window reports.
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
