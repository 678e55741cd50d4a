#include "bench/Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

namespace bench {

namespace {

std::string formatted(const char *format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

} // namespace

double secondsOf(const std::function<void()> &work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Pair measurePaired(int times, const Run &ours, const Run &peer) {
    static_cast<void>(ours());
    static_cast<void>(peer());
    std::vector<double> ourTimes;
    std::vector<double> peerTimes;
    for (int at = 0; at < times; ++at) {
        const bool weBegin = at % 2 == 0;
        if (!weBegin) {
            peerTimes.push_back(peer());
        }
        ourTimes.push_back(ours());
        if (weBegin) {
            peerTimes.push_back(peer());
        }
    }
    return {median(std::move(ourTimes)), median(std::move(peerTimes))};
}

std::string timeText(double seconds) {
    return seconds >= 1 ? formatted("%.3f s", seconds) : formatted("%.2f ms", seconds * 1000);
}

Row timedRow(std::string what, const Pair &pair, double bar) {
    return {std::move(what), timeText(pair.ours), timeText(pair.peer), pair.ours / pair.peer, bar};
}

void printHead() {
    std::printf("%-66s %11s %11s %7s %7s  %s\n", "work / peer", "ours", "peer", "ratio", "bar", "");
    std::fflush(stdout);
}

void print(const Row &row) {
    std::printf("%-66s %11s %11s %7.2f %7.2f  %s\n", row.what.c_str(), row.ours.c_str(), row.peer.c_str(),
                row.ratio, row.bar, row.ok() ? "ok" : "short");
    std::fflush(stdout);
}

} // namespace bench
