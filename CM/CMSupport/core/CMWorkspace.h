// Supplies the template variable "workspace" as the caller gives it.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMWorkspace : public CMUserBasedArgument {
  public:
    explicit CMWorkspace(CString workspace) : workspace_(std::move(workspace)) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// Returns the workspace as given; returns any other name unchanged.
    [[nodiscard]] CString substitute(const CString &name) override;

  private:
    CString workspace_;
};
