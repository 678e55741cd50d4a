// CMLabel: the label or version that the user entered, the variable "label".
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMLabel : public CMUserBasedArgument {
  public:
    explicit CMLabel(CString label) : label_(std::move(label)) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// The label, in double quotes if it holds a blank; another name comes back unchanged.
    [[nodiscard]] CString substitute(const CString &name) override;

  private:
    CString label_;
};
