// ToolPattern: a pattern that a property of the tool in use holds, looked up once and matched against many texts.
#pragma once

#include "CM/host/SPString.h"
#include "CM/platform/CString.h"

#include <optional>
#include <string_view>

class ToolPattern {
  public:
    /// Looks the property up for the tool in use, on the default referee, and whether the trace is on.
    explicit ToolPattern(const CString &key);

    /// Matches without regard to case. 1 with group 1 in `result`, or with an empty `result` if the property's
    /// value is empty; 0 without a match or without the property, with `result` as it was. `wasSet` becomes 1 if
    /// the property holds a pattern, 0 if its value is empty, and stays as it was without the property. `result`
    /// is part of `text`.
    int extract(std::string_view text, std::string_view &result, int &wasSet) const;

    /// Whether the other one gives the same for every text.
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
