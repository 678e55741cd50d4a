#include "orchard/storage/ReadAhead.h"

#include <algorithm>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

namespace orchard {

unsigned ReadAhead::usualThreads() {
    constexpr unsigned most = 8; // reading gains little from more
    return std::clamp(std::thread::hardware_concurrency(), 1U, most);
}

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
    startWorkers();
    change_.notify_all();
}

void ReadAhead::startWorkers() {
    workers_.reserve(threads_);
    try {
        while (workers_.size() + 1 < threads_) {
            workers_.emplace_back([this] { work(); });
        }
    } catch (const std::system_error &) {
        threads_ = workers_.size() + 1; // the caller's reads what nobody else does
    }
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
    std::optional<UnitReader> reader;
    try {
        reader.emplace(model_);
    } catch (const std::bad_alloc &) {
        return; // the others read what this one doesn't
    }
    std::unique_lock lock(mutex_);
    while (true) {
        change_.wait(lock, [this] { return ends_ || !waiting_.empty(); });
        if (ends_) {
            return;
        }
        Batch *const batch = takeWaiting();
        lock.unlock();
        read(*batch, *reader);
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
