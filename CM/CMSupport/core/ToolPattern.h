// Looks up a pattern in a property of the tool in use, once, and matches it against many texts.
#pragma once

#include "CM/host/SPString.h"
#include "CM/platform/CString.h"

#include <optional>
#include <string_view>

class ToolPattern {
  public:
    /// Looks up the property for the tool in use, on the default referee, and whether the trace is on.
    explicit ToolPattern(const CString &key);

    /// Matches ignoring case. Returns 1 with group 1 in `result`, which is then part of `text`, or with an empty
    /// `result` if the property's value is empty; 0, with `result` unchanged, without a match or without the
    /// property. `wasSet` becomes 1 if the property contains a pattern, 0 if its value is empty, and is unchanged
    /// without the property.
    int extract(std::string_view text, std::string_view &result, int &wasSet) const;

    /// Returns whether the other pattern matches every text in the same way.
    [[nodiscard]] bool isSameAs(const ToolPattern &other) const {
        return exists_ == other.exists_ && text_ == other.text_;
    }

  private:
    CString key_;
    bool traces_;
    bool exists_ = false;
    CString text_;
    std::optional<SPPattern> pattern_; ///< none for an empty value
};
