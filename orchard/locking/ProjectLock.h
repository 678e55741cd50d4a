// Lets one program at a time change a project.
//
// The lock is on the file PROJECT.orp.lock beside the project file. That file is never removed, because waiting
// programs have it open. The system releases the lock when its process ends, however that ends. The file contains
// a count, which changes with every change of the project, and a line for each program that holds the lock:
//
//     orchard-lock 1 00000000000000000042
//     process 4711 of kim on box: orchard-cm rename Pump Tank
//
// There are two ways to hold it: alone, for changes of the model; or beside others, for work that changes only the
// files of certain units, which are locked in addition.
#pragma once

#include "CM/platform/LockFile.h"
#include "orchard/OrchardApi.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orchard {

/// How long to wait for other programs. The functions may be left empty.
struct LockWaiting {
    std::chrono::milliseconds limit{0};
    std::function<bool()> cancelled; ///< called from time to time; true ends the waiting
    /// Called from time to time with the programs that hold the lock.
    std::function<void(const std::string &holders)> waits;
};

class ORCHARD_API ProjectLock {
  public:
    enum class Answer {
        held,
        busy,      ///< others held it until the limit
        cancelled, ///< the caller ended the waiting
        impossible ///< the file can't be created, written or locked; fault() has the reason
    };

    /// Opens the file beside the project file, but locks nothing yet. `command` is shown to others that wait for
    /// this program. A line break or control character in it is shown as a blank.
    ProjectLock(const std::string &projectFile, const std::string &command);
    /// Releases the lock.
    ~ProjectLock();
    ProjectLock(const ProjectLock &) = delete;
    ProjectLock &operator=(const ProjectLock &) = delete;

    /// Holds the project alone.
    [[nodiscard]] Answer holdAlone(const LockWaiting &waiting);
    /// Holds the project beside others that do the same. Nobody can hold it alone then.
    [[nodiscard]] Answer holdBesideOthers(const LockWaiting &waiting);
    /// Locks these units against others that hold the project beside this one. Every program must name a unit by
    /// the same text. Locks all of them or none.
    [[nodiscard]] Answer holdUnits(const std::vector<std::string> &units, const LockWaiting &waiting);
    /// Keeps others that hold the project beside this one from saving, for a short time.
    [[nodiscard]] Answer holdSaving(const LockWaiting &waiting);
    void releaseSaving();
    /// Releases everything. Does nothing if nothing is held.
    void release();
    [[nodiscard]] bool isHeld() const { return held_ != Held::nothing; }
    [[nodiscard]] bool isHeldAlone() const { return held_ == Held::alone; }

    /// Returns the programs that hold the lock now, without this one; empty if there are none.
    [[nodiscard]] std::string otherHolders() const;
    /// Returns why the project can't be locked; empty as long as it can.
    [[nodiscard]] const std::string &fault() const { return file_.fault(); }

    /// Remembers the count. Call this before the project is read, with or without the lock.
    void beginReading();
    /// Returns whether another program may have changed the project since beginReading(). Call this only while the
    /// lock is held.
    [[nodiscard]] bool isChangedSinceReading() const { return !seen_ || *seen_ != count(); }

  private:
    enum class Held { nothing, alone, besideOthers };

    Answer hold(Held how, const LockWaiting &waiting);
    Answer waitFor(const LockWaiting &waiting, const std::function<platform::LockFile::Taken()> &tryOnce) const;
    platform::LockFile::Taken tryUnits(const std::vector<std::uint64_t> &places);
    void writeHolder();
    void eraseHolder();
    [[nodiscard]] std::string count() const;
    void countChange();

    platform::LockFile file_;
    std::string holder_;
    Held held_ = Held::nothing;
    std::optional<std::uint64_t> line_; ///< the place of this program's line
    std::optional<std::string> seen_;   ///< the count when the project was read; empty if unknown
};

/// Returns the programs that change the project now; empty if there are none. For programs that only read.
[[nodiscard]] ORCHARD_API std::string programsChanging(const std::string &projectFile);

} // namespace orchard
