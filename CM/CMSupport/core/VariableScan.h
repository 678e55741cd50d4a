// VariableScan: a text in which the first variable is replaced, again and again.
#pragma once

#include "CM/host/SPString.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Gives the same text as searching it from its front for each variable would, but passes over what can't hold
/// the next one: its time grows with the length of the text and of what is put in, not with their product.
class VariableScan {
  public:
    explicit VariableScan(std::string_view text) : rest_(text) {}

    /// Finds the first variable. `matches` takes its whole text and its name; false, and an empty list, without
    /// one.
    bool find(SPStringList &matches);
    /// Puts a text in the place of the variable that was found last. The text is searched by the next find().
    void replace(std::string_view inserted);
    /// The whole text as it stands. Ends the use of the object.
    std::string take();

  private:
    void pushFront(std::string_view text);

    std::string passed_;          // what no variable can begin in, as long as nothing is put in behind it
    std::string rest_;            // what is still to be searched, from at_; what stands before is free room
    std::size_t at_ = 0;          // where the next search begins, and where the variable found last stands
    std::size_t foundLength_ = 0; // of the variable found last
};
