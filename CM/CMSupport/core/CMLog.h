// Supplies the template variable "log": the comment that the user entered.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"

class ORC_CM_API CMLog : public CMUserBasedArgument {
  public:
    explicit CMLog(CString text) : text_(std::move(text)) {}

    [[nodiscard]] int isNamed(const CString &name) const override;
    /// Returns the comment, in single quotes if it contains a blank, a newline or a carriage return. If
    /// EncloseCommentsInQuotes() is true, returns the comment unquoted, whatever the name is. Nothing in the
    /// comment is escaped.
    [[nodiscard]] CString substitute(const CString &name) override;

    /// Returns true if the active project's property of this name is "No" (in any case), that is, if comments stay
    /// unquoted: the name says the opposite of the result.
    [[nodiscard]] static bool EncloseCommentsInQuotes();

  private:
    CString text_;
};
