// Measures side by side: runs our work and its peer alternately, so that other load on the machine affects both.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// A row of the table.
struct Row {
    std::string what;
    std::string ours; ///< as printed, with its unit
    std::string peer;
    double ratio = 0; ///< our time divided by the peer's
    double bar = 0;   ///< the largest ratio allowed
    [[nodiscard]] bool ok() const { return ratio <= bar; }
};

/// Runs a work and returns how long the measured part took, in seconds.
using Run = std::function<double()>;

struct Pair {
    double ours = 0; ///< medians, in seconds
    double peer = 0;
};

/// Runs both `times` times alternately, and lets each go first in turn. Before that it runs each once without
/// counting it.
Pair measurePaired(int times, const Run &ours, const Run &peer);

/// Returns how long `work` takes, in seconds.
double secondsOf(const std::function<void()> &work);

[[nodiscard]] double median(std::vector<double> values);

/// Formats seconds as "1.234 s" or "12.34 ms".
[[nodiscard]] std::string timeText(double seconds);
/// Makes the row of a timed work.
[[nodiscard]] Row timedRow(std::string what, const Pair &pair, double bar);

void printHead();
void print(const Row &row);

} // namespace bench
