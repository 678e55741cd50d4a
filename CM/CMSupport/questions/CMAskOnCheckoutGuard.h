// Limits how long an answer for all units remains in force: when the outermost guard of a command ends, it empties
// CCMSyncQuestionDlg::m_response.
#pragma once

#include "CM/CMSupport/core/CMApi.h"

class ORC_CM_API CMAskOnCheckoutGuard {
  public:
    CMAskOnCheckoutGuard();
    ~CMAskOnCheckoutGuard();
    CMAskOnCheckoutGuard(const CMAskOnCheckoutGuard &) = delete;
    CMAskOnCheckoutGuard &operator=(const CMAskOnCheckoutGuard &) = delete;

  private:
    static int m_Ref; ///< the number of guards that exist
};
