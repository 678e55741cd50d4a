#include "orchard/model/Undo.h"

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
    if (open_.empty() || brackets_[open_.back()].doNothing != doNothing) {
        return;
    }
    brackets_[open_.back()].open = false;
    open_.pop_back();
    if (open_.empty() && !doNothing) {
        ++steps_;
    }
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
