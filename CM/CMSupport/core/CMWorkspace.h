// CMWorkspace: the workspace of a command, the variable "workspace".
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMWorkspace : public CMUserBasedArgument {
  public:
    explicit CMWorkspace(CString workspace) : workspace_(std::move(workspace)) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// The workspace as given; another name comes back unchanged.
    [[nodiscard]] CString substitute(const CString &name) override;

  private:
    CString workspace_;
};
