#include "orchard/storage/ParallelReading.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <future>
#include <system_error>
#include <thread>
#include <vector>

namespace orchard {

namespace {

/// The number of files that a thread takes at a time.
constexpr std::size_t batchSize = 32;

/// More threads than this gain little.
constexpr std::size_t mostThreads = 8;

std::size_t threadsFor(std::size_t units) {
    const std::size_t batches = (units + batchSize - 1) / batchSize;
    return std::min({batches, mostThreads, std::size_t{std::max(std::thread::hardware_concurrency(), 1U)}});
}

} // namespace

void readFiles(Model &model, std::span<ListedUnit> units) {
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        UnitReader reader(model);
        for (std::size_t at = next.fetch_add(batchSize); at < units.size(); at = next.fetch_add(batchSize)) {
            for (ListedUnit &listed : units.subspan(at, std::min(batchSize, units.size() - at))) {
                if (listed.isWanted) {
                    listed.reading = reader.read(*listed.unit);
                }
            }
        }
    };
    std::vector<std::future<void>> helpers; // destroying them waits for their threads
    try {
        while (helpers.size() + 1 < threadsFor(units.size())) {
            helpers.push_back(std::async(std::launch::async, work));
        }
    } catch (const std::system_error &) {
        // No more threads can be started; the running ones read all files.
    }
    work();
    for (std::future<void> &helper : helpers) {
        helper.get();
    }
}

} // namespace orchard
