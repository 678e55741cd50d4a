// CMLog: the comment that the user entered, the variable "log".
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMLog : public CMUserBasedArgument {
  public:
    explicit CMLog(CString text) : text_(std::move(text)) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// The comment, in single quotes if it holds a blank, a newline or a carriage return; as it stands, and for
    /// any name, if EncloseCommentsInQuotes() is true. Nothing inside it is escaped.
    [[nodiscard]] CString substitute(const CString &name) override;

    /// True if the property of this name of the active project is "No" (in any case), that is, if comments are to
    /// stay bare: the name says the opposite of the result.
    [[nodiscard]] static bool EncloseCommentsInQuotes();

  private:
    CString text_;
};
