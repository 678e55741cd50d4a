// Supplies the template variable "shouldSuppressSCCOKMessage", which asks an operation not to report success.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMSuppressOKMessage : public CMArgument {
  public:
    explicit CMSuppressOKMessage(CString flag) : flag_(std::move(flag)) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// Returns the flag text as given; returns any other name unchanged.
    [[nodiscard]] CString substitute(const CString &name) override;

  private:
    CString flag_;
};
