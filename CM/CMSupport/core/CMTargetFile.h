// CMTargetFile: the directory into which a command puts its files, the variable "targetDir".
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMTargetFile : public CMArgument {
  public:
    explicit CMTargetFile(CString directory) : directory_(std::move(directory)) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// The directory as given; another name comes back unchanged.
    [[nodiscard]] CString substitute(const CString &name) override;

  private:
    CString directory_;
};
