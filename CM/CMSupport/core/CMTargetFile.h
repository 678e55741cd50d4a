// Supplies the template variable "targetDir": the directory into which a command puts its files.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMTargetFile : public CMArgument {
  public:
    explicit CMTargetFile(CString directory) : directory_(std::move(directory)) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// Returns the directory as given; returns any other name unchanged.
    [[nodiscard]] CString substitute(const CString &name) override;

  private:
    CString directory_;
};
