// What is told about patterns that can't be used. This folder knows nothing of properties, logs or messages: the
// host hangs its own on the two hooks.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orchard {

struct PatternProblem {
    std::string pattern;                 ///< as it was written
    std::optional<std::size_t> position; ///< of a mistake: bytes from the start of the pattern, counted from 0
    std::string reason;                  ///< what is wrong, in words
    std::string origin;                  ///< where the pattern comes from, such as a property; may be empty

    /// One message of several lines: what is wrong with which pattern, where, and what the system does now.
    [[nodiscard]] std::string message() const;
};

/// Receives each problem. It is called once per pattern and reason as long as the process runs.
using PatternReporter = std::function<void(const PatternProblem &)>;
/// Finds out where a pattern with this text comes from; the empty text if nobody knows.
using PatternOriginFinder = std::function<std::string(std::string_view pattern)>;

/// Without a reporter, problems are written to the standard error stream.
void setPatternReporter(PatternReporter reporter);
void setPatternOriginFinder(PatternOriginFinder finder);

/// Reports a problem, unless the same was reported already. The origin is filled in here.
void reportPatternProblem(PatternProblem problem);

} // namespace orchard
