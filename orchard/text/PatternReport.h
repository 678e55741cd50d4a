// Reports patterns that can't be used. This folder doesn't depend on properties, logs or messages: the host sets
// two functions for them.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orchard {

struct PatternProblem {
    std::string pattern;                 ///< as written
    std::optional<std::size_t> position; ///< of a mistake: bytes from the start of the pattern, counted from 0
    std::string reason;                  ///< what is wrong
    std::string origin;                  ///< where the pattern comes from, such as a property; may be empty

    /// Returns a message of several lines: what is wrong with which pattern, where, and the consequence.
    [[nodiscard]] std::string message() const;
};

/// Receives each problem, once per process for each pattern and reason.
using PatternReporter = std::function<void(const PatternProblem &)>;
/// Returns the origin of a pattern with this text; empty if it is unknown.
using PatternOriginFinder = std::function<std::string(std::string_view pattern)>;

/// Without a reporter, problems go to standard error.
void setPatternReporter(PatternReporter reporter);
void setPatternOriginFinder(PatternOriginFinder finder);

/// Reports a problem, with its origin, unless the same problem was reported before.
void reportPatternProblem(PatternProblem problem);

} // namespace orchard
