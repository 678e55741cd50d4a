// CMAskOnCheckoutGuard: bounds how long an answer for all units lives. The outermost guard of a command empties
// the answer of CCMSyncQuestionDlg when it ends.
#pragma once

#include "CM/CMSupport/core/CMApi.h"

class ORC_CM_API CMAskOnCheckoutGuard {
  public:
    CMAskOnCheckoutGuard();
    ~CMAskOnCheckoutGuard();
    CMAskOnCheckoutGuard(const CMAskOnCheckoutGuard &) = delete;
    CMAskOnCheckoutGuard &operator=(const CMAskOnCheckoutGuard &) = delete;

  private:
    static int m_Ref; ///< how many guards are alive
};
