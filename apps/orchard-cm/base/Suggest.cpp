#include "apps/orchard-cm/base/Suggest.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orchard_cm {

namespace {

char lower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

bool beginsWith(std::string_view text, std::string_view start) {
    return start.size() <= text.size() &&
           std::ranges::equal(start, text.substr(0, start.size()), {}, lower, lower);
}

} // namespace

std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit) {
    const std::size_t difference =
        left.size() > right.size() ? left.size() - right.size() : right.size() - left.size();
    if (difference > limit) {
        return limit + 1;
    }
    // Three rows of the table are enough: a swap of neighbours looks two rows back.
    std::array<std::vector<std::size_t>, 3> rows;
    rows.fill(std::vector<std::size_t>(right.size() + 1));
    for (std::size_t column = 0; column <= right.size(); ++column) {
        rows[0][column] = column;
    }
    for (std::size_t row = 1; row <= left.size(); ++row) {
        auto &now = rows[row % 3];
        const auto &above = rows[(row - 1) % 3];
        const auto &twoAbove = rows[(row + 1) % 3];
        now[0] = row;
        std::size_t smallest = row;
        for (std::size_t column = 1; column <= right.size(); ++column) {
            const char a = lower(left[row - 1]);
            const char b = lower(right[column - 1]);
            std::size_t best =
                std::min({above[column] + 1, now[column - 1] + 1, above[column - 1] + (a == b ? 0U : 1U)});
            if (row > 1 && column > 1 && a == lower(right[column - 2]) && lower(left[row - 2]) == b) {
                best = std::min(best, twoAbove[column - 2] + 1);
            }
            now[column] = best;
            smallest = std::min(smallest, best);
        }
        if (smallest > limit) {
            return limit + 1;
        }
    }
    return std::min(rows[left.size() % 3][right.size()], limit + 1);
}

Suggester::Suggester(std::string mistyped)
    : mistyped_(std::move(mistyped)), limit_(std::max<std::size_t>(1, mistyped_.size() / 3)) {}

void Suggester::offer(std::string_view name) {
    if (name == mistyped_) {
        return; // an identical name is wrong for another reason
    }
    if (name.empty() || mistyped_.empty()) {
        return;
    }
    std::size_t distance = editDistance(mistyped_, name, limit_);
    if (distance > limit_) {
        const std::size_t common = std::min(mistyped_.size(), name.size());
        if (common < 3 || !(beginsWith(name, mistyped_) || beginsWith(mistyped_, name))) {
            return;
        }
        distance = limit_ + 1;
    }
    candidates_.push_back({distance, std::string(name)});
}

std::vector<std::string> Suggester::best(std::size_t count) const {
    auto sorted = candidates_;
    std::ranges::stable_sort(sorted, {}, &Candidate::distance);
    std::vector<std::string> names;
    for (auto &candidate : sorted) {
        if (names.size() == count) {
            break;
        }
        if (std::ranges::find(names, candidate.name) == names.end()) {
            names.push_back(std::move(candidate.name));
        }
    }
    return names;
}

} // namespace orchard_cm
