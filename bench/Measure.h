// Measuring side by side: our work and its peer are run in turns, so that whatever else the machine does meets
// both.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// A result in the table.
struct Row {
    std::string what;
    std::string ours; ///< as printed, with its unit
    std::string peer;
    double ratio = 0; ///< ours to the peer's
    double bar = 0;   ///< the largest ratio that will do
    [[nodiscard]] bool ok() const { return ratio <= bar; }
};

/// A run of a work; gives back how long the part that counts took, in seconds.
using Run = std::function<double()>;

struct Pair {
    double ours = 0; ///< medians, in seconds
    double peer = 0;
};

/// Runs both `times` times, in turns, and who begins changes each time. One more run of each comes first and does
/// not count.
Pair measurePaired(int times, const Run &ours, const Run &peer);

/// How long `work` takes, in seconds.
double secondsOf(const std::function<void()> &work);

[[nodiscard]] double median(std::vector<double> values);

/// "1.234 s", "12.3 ms".
[[nodiscard]] std::string timeText(double seconds);
/// A row of a work that was timed.
[[nodiscard]] Row timedRow(std::string what, const Pair &pair, double bar);

void printHead();
void print(const Row &row);

} // namespace bench
