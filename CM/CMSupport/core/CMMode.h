// Supplies the template variable "mode": whether a command works read-only or read-write.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMMode : public CMPropertyDirectedArgument {
  public:
    /// The numbers differ from those of CMArchiveItem::Mode.
    enum Mode { readOnly = 0, readWrite = 1 };

    explicit CMMode(Mode mode) : mode_(mode) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// Returns the mode text of the tool in use, from its property IPN::CMReadOnly or IPN::CMReadWrite; empty if
    /// the tool has none. Returns any other name unchanged.
    [[nodiscard]] CString substitute(const CString &name) override;

  private:
    Mode mode_;
};
