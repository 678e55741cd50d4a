// Reads unit files on several threads and hands the readings over one by one, in the order in which they were
// asked for. A few files are read by the caller's thread alone.
#pragma once

#include "orchard/storage/UnitReader.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace orchard {

class ReadAhead {
  public:
    /// `threads` at most, the caller's among them; where fewer can be started, fewer do.
    explicit ReadAhead(Model &model, unsigned threads = usualThreads())
        : model_(model), reader_(model), threads_(threads) {}
    /// Waits for what is being read; the rest is not read.
    ~ReadAhead();
    ReadAhead(const ReadAhead &) = delete;
    ReadAhead &operator=(const ReadAhead &) = delete;

    /// Asks for the file of a unit; one that is not wanted is handed over unread. Until it is handed over, the
    /// unit, what is below it, and the names and places of its owners belong to the reading.
    void ask(UnitElement &unit, bool isWanted);
    /// How many have been asked for so far.
    [[nodiscard]] std::size_t asked() const { return asked_; }

    struct Handed {
        UnitElement *unit = nullptr; ///< null if all that was asked for has been handed over
        UnitReading reading;
    };
    /// The next one. Throws what its reading has thrown.
    [[nodiscard]] Handed next();

  private:
    /// As many as a thread takes at a time.
    static constexpr std::size_t batchSize = 32;
    struct Item {
        UnitElement *unit;
        bool isWanted;
        UnitReading reading;
    };
    struct Batch {
        std::vector<Item> items;
        enum { waiting, taken, done } state = waiting;
        std::exception_ptr thrown;
    };

    [[nodiscard]] static unsigned usualThreads();
    [[nodiscard]] bool moveOn();
    void publishLast();
    void startWorkers();
    void await(Batch &batch);
    [[nodiscard]] Batch *takeWaiting();
    static void read(Batch &batch, UnitReader &reader);
    void work();

    Model &model_;
    UnitReader reader_;
    std::size_t threads_;
    std::size_t asked_ = 0;
    std::size_t handed_ = 0;           ///< of the front batch
    std::unique_ptr<Batch> front_;     ///< being handed over
    std::unique_ptr<Batch> last_;      ///< being asked for; nobody else knows it
    std::vector<std::thread> workers_; ///< started when a batch is full for the first time

    std::mutex mutex_; ///< for what follows, and for the states of the batches
    std::condition_variable change_;
    std::deque<std::unique_ptr<Batch>> batches_; ///< behind the front one, full
    std::deque<Batch *> waiting_;
    bool ends_ = false;
};

} // namespace orchard
