// Suggests the known names that are closest to a mistyped one ("Did you mean").
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orchard_cm {

/// Returns how many single-letter insertions, deletions, changes and swaps of neighbours lead from one text to the
/// other, regardless of the case of ASCII letters. Counting stops at `limit`: for a greater distance the result is
/// limit + 1.
std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit);

/// Collects names and keeps the closest. A name is close if it differs from the mistyped text in at most a third
/// of that text's letters (at least one), or if one of the two begins with the other and at least three letters
/// agree.
class Suggester {
  public:
    explicit Suggester(std::string mistyped);
    void offer(std::string_view name);
    /// Returns at most `count` names, the closest first, equally close ones in the order in which they were
    /// offered. No name appears twice.
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
