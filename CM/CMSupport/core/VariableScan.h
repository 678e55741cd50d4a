// Replaces the variables of a text one after the other.
#pragma once

#include "CM/CMSupport/core/Variable.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Gives the same result as searching from the beginning for each variable, but skips text that can't contain the
/// next one. So the time is proportional to the length of the text plus the insertions, not to their product.
class VariableScan {
  public:
    explicit VariableScan(std::string_view text) : rest_(text) {}

    /// Finds the next variable. Ignore its position.
    [[nodiscard]] std::optional<Variable> find();
    /// Replaces the variable that was found last by a text, which the next find() searches.
    void replace(std::string_view inserted);
    /// Returns the complete text. The object must not be used afterwards.
    std::string take();

  private:
    void pushFront(std::string_view text);

    std::string passed_;          // text in which no variable can begin unless text is inserted right after it
    std::string rest_;            // text still to be searched, from at_; the text before is free space
    std::size_t at_ = 0;          // where the next search begins, and where the variable found last begins
    std::size_t foundLength_ = 0; // of the variable found last
};
