// "Did you mean": the known names that are closest to a mistyped one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orchard_cm {

/// How many single-letter insertions, deletions, changes and swaps of neighbours lead from one text to the other,
/// ASCII letters compared without regard to case. Counting stops at `limit`: a greater distance gives limit + 1.
std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit);

/// Collects names and keeps the closest. A name is close if it differs by at most a third of the mistyped text's
/// letters (at least one), or if either begins with the other and three letters or more agree.
class Suggester {
  public:
    explicit Suggester(std::string mistyped);
    void offer(std::string_view name);
    /// At most `count` names, the closest first, equal ones in the order in which they were offered; no name
    /// twice.
    [[nodiscard]] std::vector<std::string> best(std::size_t count = 3) const;

  private:
    struct Candidate {
        std::size_t distance;
        std::string name;
    };
    std::string mistyped_;
    std::size_t limit_;
    std::vector<Candidate> candidates_;
};

} // namespace orchard_cm
