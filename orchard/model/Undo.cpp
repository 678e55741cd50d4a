#include "orchard/model/Undo.h"

#include <algorithm>
#include <iterator>

namespace orchard {

UndoRecorder &UndoRecorder::instance() {
    static UndoRecorder recorder;
    return recorder;
}

void UndoRecorder::startTransaction(AbstractPackedViewParams * /*viewParams*/, int flag, int, int) {
    start(flag, false);
}

void UndoRecorder::start(int flag, bool doNothing) {
    constexpr std::size_t kept = 1000;
    if (open_.empty() && brackets_.size() >= 2 * kept) {
        brackets_.erase(brackets_.begin(), brackets_.end() - kept);
    }
    open_.push_back(brackets_.size());
    brackets_.push_back({flag, depth() - 1, doNothing, true, 0});
}

void UndoRecorder::end(bool doNothing) {
    // Brackets of the two kinds may overlap.
    const auto found = std::find_if(open_.rbegin(), open_.rend(), [&](std::size_t bracket) {
        return brackets_[bracket].doNothing == doNothing;
    });
    if (found == open_.rend()) {
        return;
    }
    Bracket &closed = brackets_[*found];
    closed.open = false;
    if (closed.depth == 0 && !doNothing) {
        ++steps_;
    }
    open_.erase(std::next(found).base());
}

void UndoRecorder::noteChange() {
    for (const std::size_t bracket : open_) {
        ++brackets_[bracket].changes;
    }
}

void UndoRecorder::clear() {
    brackets_.clear();
    open_.clear();
    steps_ = 0;
}

} // namespace orchard

Undoer *Undoer::instance() { return &orchard::UndoRecorder::instance(); }
void Undoer::endTransaction() { orchard::UndoRecorder::instance().end(false); }
void Undoer::startDoNothingTransaction() { orchard::UndoRecorder::instance().start(0, true); }
void Undoer::endDoNothingTransaction() { orchard::UndoRecorder::instance().end(true); }

UnUndoableTransaction::UnUndoableTransaction(int flag) { orchard::UndoRecorder::instance().start(flag, true); }
UnUndoableTransaction::~UnUndoableTransaction() { orchard::UndoRecorder::instance().end(true); }
