// Failure: why an entry failed, as a result code and a text for the user.
#pragma once

#include "CM/scc/scc.h"

#include <svn_error.h>

#include <exception>
#include <string>

namespace svnscc {

class Failure : public std::exception {
  public:
    /// `text` is for the user; it may have several lines.
    Failure(SCCRTN result, std::string text) : result_(result), text_(std::move(text)) {}

    [[nodiscard]] SCCRTN result() const { return result_; }
    [[nodiscard]] const std::string &text() const { return text_; }
    [[nodiscard]] const char *what() const noexcept override { return text_.c_str(); }

  private:
    SCCRTN result_;
    std::string text_;
};

/// Takes an error of the Subversion libraries over and throws it as a Failure, with a hint on what to do where
/// there is one. Does nothing for a null pointer.
void check(svn_error_t *error);

/// The result code for an error of the Subversion libraries, which remains the caller's.
SCCRTN resultOf(const svn_error_t &error);

/// The messages of an error and of its causes, without a hint. The error remains the caller's.
std::string messagesOf(const svn_error_t &error);

} // namespace svnscc
