// CMSuppressOKMessage: tells an operation to be silent about success, the variable "shouldSuppressSCCOKMessage".
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMSuppressOKMessage : public CMArgument {
  public:
    explicit CMSuppressOKMessage(CString flag) : flag_(std::move(flag)) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// The flag text as given; another name comes back unchanged.
    [[nodiscard]] CString substitute(const CString &name) override;

  private:
    CString flag_;
};
