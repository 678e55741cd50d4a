// Supplies the template variable "label": the label or version that the user entered.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMLabel : public CMUserBasedArgument {
  public:
    explicit CMLabel(CString label) : label_(std::move(label)) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// Returns the label, in double quotes if it contains a blank; returns any other name unchanged.
    [[nodiscard]] CString substitute(const CString &name) override;

  private:
    CString label_;
};
