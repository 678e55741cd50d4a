// Replaces the variables of a text one after the other.
#pragma once

#include "CM/CMSupport/core/Variable.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Yields the same text as a search from its front for each variable, but skips what can't contain the next one:
/// the time grows with the length of the text and of the insertions, not with their product.
class VariableScan {
  public:
    explicit VariableScan(std::string_view text) : rest_(text) {}

    /// Finds the first variable. Its position has no meaning for the caller.
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
