#include "orchard/storage/ReadAhead.h"

#include <algorithm>
#include <utility>

namespace orchard {

namespace {

/// Besides the caller's own; reading gains little from more.
constexpr unsigned mostWorkers = 7;

} // namespace

ReadAhead::~ReadAhead() {
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
    }
    change_.notify_all();
    for (std::thread &worker : workers_) {
        worker.join();
    }
}

void ReadAhead::ask(UnitElement &unit, bool isWanted) {
    if (last_ == nullptr) {
        last_ = std::make_unique<Batch>();
        last_->items.reserve(batchSize);
    }
    last_->items.push_back({&unit, isWanted, {}});
    ++asked_;
    if (last_->items.size() == batchSize) {
        publishLast();
    }
}

/// Gives the batch that is full now to whoever has time for it.
void ReadAhead::publishLast() {
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(last_.get());
        batches_.push_back(std::move(last_));
    }
    if (workers_.empty()) {
        const unsigned threads = std::clamp(std::thread::hardware_concurrency(), 1U, mostWorkers + 1);
        for (unsigned at = 1; at < threads; ++at) {
            workers_.emplace_back([this] { work(); });
        }
    }
    change_.notify_all();
}

ReadAhead::Batch *ReadAhead::takeWaiting() {
    if (waiting_.empty()) {
        return nullptr;
    }
    Batch *const batch = waiting_.front();
    waiting_.pop_front();
    batch->state = Batch::taken;
    return batch;
}

void ReadAhead::read(Batch &batch, UnitReader &reader) {
    try {
        for (Item &item : batch.items) {
            if (item.isWanted) {
                item.reading = reader.read(*item.unit);
            }
        }
    } catch (...) {
        batch.thrown = std::current_exception();
    }
}

void ReadAhead::work() {
    UnitReader reader(model_);
    std::unique_lock lock(mutex_);
    while (true) {
        change_.wait(lock, [this] { return ends_ || !waiting_.empty(); });
        if (ends_) {
            return;
        }
        Batch *const batch = takeWaiting();
        lock.unlock();
        read(*batch, reader);
        lock.lock();
        batch->state = Batch::done;
        change_.notify_all();
    }
}

/// Until the batch is read, helps with what waits.
void ReadAhead::await(Batch &batch) {
    std::unique_lock lock(mutex_);
    while (batch.state != Batch::done) {
        if (Batch *const mine = takeWaiting()) {
            lock.unlock();
            read(*mine, reader_);
            lock.lock();
            mine->state = Batch::done;
        } else {
            change_.wait(lock);
        }
    }
}

/// Brings the next batch to the front, read; false if there is none.
bool ReadAhead::moveOn() {
    front_.reset();
    handed_ = 0;
    {
        const std::lock_guard lock(mutex_);
        if (!batches_.empty()) {
            front_ = std::move(batches_.front());
            batches_.pop_front();
        }
    }
    if (front_ != nullptr) {
        await(*front_);
    } else if (last_ != nullptr) {
        front_ = std::move(last_);
        read(*front_, reader_);
    } else {
        return false;
    }
    if (front_->thrown) {
        std::rethrow_exception(front_->thrown);
    }
    return true;
}

ReadAhead::Handed ReadAhead::next() {
    if ((front_ == nullptr || handed_ == front_->items.size()) && !moveOn()) {
        return {};
    }
    Item &item = front_->items[handed_++];
    return {item.unit, std::move(item.reading)};
}

} // namespace orchard
