#include "CM/CMSupport/questions/CMAskOnCheckoutGuard.h"

#include "CM/CMSupport/questions/CCMSyncQuestionDlg.h"

int CMAskOnCheckoutGuard::m_Ref = 0;

CMAskOnCheckoutGuard::CMAskOnCheckoutGuard() { ++m_Ref; }

CMAskOnCheckoutGuard::~CMAskOnCheckoutGuard() {
    if (--m_Ref == 0) {
        CCMSyncQuestionDlg::m_response.Empty();
    }
}
