// Defines Failure, the exception of a command that can't continue: a message, a hint and suggestions.
#pragma once

#include "apps/orchard-cm/base/ExitCode.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orchard_cm {

class Failure : public std::runtime_error {
  public:
    /// `message` names the file, property or unit and what was expected; `hint` says what the user can do.
    Failure(ExitCode code, const std::string &message, std::string hint = {})
        : std::runtime_error(message), code_(code), hint_(std::move(hint)) {}

    /// Adds names that the user may have meant, the best first.
    Failure &&meaning(std::vector<std::string> names) && {
        suggestions_ = std::move(names);
        return std::move(*this);
    }

    [[nodiscard]] ExitCode code() const { return code_; }
    [[nodiscard]] const std::string &hint() const { return hint_; }
    [[nodiscard]] const std::vector<std::string> &suggestions() const { return suggestions_; }

  private:
    ExitCode code_;
    std::string hint_;
    std::vector<std::string> suggestions_;
};

} // namespace orchard_cm
