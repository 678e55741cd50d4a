#include "orchard/worker/RunWatch.h"

#include <utility>

namespace orchard {

namespace {
RunWatch &watchInForce() {
    static RunWatch watch;
    return watch;
}
} // namespace

void setRunWatch(RunWatch watch) { watchInForce() = std::move(watch); }

const RunWatch &runWatch() { return watchInForce(); }

} // namespace orchard
