// Output: the provider's words to the user, and the user's wish to cancel.
#pragma once

#include "CM/scc/scc.h"

#include <string>
#include <string_view>

namespace svnscc {

/// Writes to the host's text output function, or to standard error while there is none. A text with several lines
/// is passed line by line.
class Output {
  public:
    /// A null pointer takes the function away.
    void setFunction(LPTEXTOUTPROC function) { function_ = function; }
    /// Whether the host lets the user cancel.
    void setCancelMode(bool isOn) { hasCancelMode_ = isOn; }

    void info(std::string_view text) { write(text, SCC_MSG_INFO); }
    void warning(std::string_view text) { write(text, SCC_MSG_WARNING); }
    void error(std::string_view text) { write(text, SCC_MSG_ERROR); }

    /// Begins an operation, with a way to cancel it if the host offers one.
    void begin();
    /// Ends the operation, and forgets that it was cancelled.
    void end();
    /// Asks whether the user has cancelled the operation.
    bool poll();
    /// Whether the user has cancelled the operation, as far as the host has said so.
    [[nodiscard]] bool isCancelled() const { return isCancelled_; }

  private:
    void write(std::string_view text, unsigned long kind);
    void send(const char *line, unsigned long kind);
    [[nodiscard]] bool offersCancel() const { return hasCancelMode_ && function_ != nullptr; }

    LPTEXTOUTPROC function_ = nullptr;
    bool hasCancelMode_ = false;
    bool isCancelled_ = false;
};

} // namespace svnscc
