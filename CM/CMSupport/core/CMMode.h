// CMMode: whether a command works read-only or read-write, the variable "mode".
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMMode : public CMPropertyDirectedArgument {
  public:
    /// The numbers are not those of CMArchiveItem::Mode.
    enum Mode { readOnly = 0, readWrite = 1 };

    explicit CMMode(Mode mode) : mode_(mode) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// The mode text of the tool in use, from its property IPN::CMReadOnly or IPN::CMReadWrite; the empty text if
    /// the tool has none. Another name comes back unchanged.
    [[nodiscard]] CString substitute(const CString &name) override;

  private:
    Mode mode_;
};
