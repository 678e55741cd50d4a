// Lets one program at a time change a project.
//
// The lock is held on a file beside the project file, PROJECT.orp.lock, which stays there: a program that waits
// has it open. The system releases the lock when its process ends, however that ends. The file holds a count,
// which changes with every change of the project, and a line for each program that holds the lock:
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
        impossible ///< the file can't be made, written or locked; fault() has the reason
    };

    /// Opens the file beside the project file, but locks nothing yet. `command` is what others read about the
    /// holder. A line break or control character in it is shown as a blank.
    ProjectLock(const std::string &projectFile, const std::string &command);
    /// Releases the lock.
    ~ProjectLock();
    ProjectLock(const ProjectLock &) = delete;
    ProjectLock &operator=(const ProjectLock &) = delete;

    /// Holds the project alone.
    [[nodiscard]] Answer holdAlone(const LockWaiting &waiting);
    /// Holds the project beside others that do the same. Nobody can hold it alone then.
    [[nodiscard]] Answer holdBesideOthers(const LockWaiting &waiting);
    /// Keeps these units from others who hold the project beside this one. A unit is named by the same text in
    /// every program. All are locked, or none.
    [[nodiscard]] Answer holdUnits(const std::vector<std::string> &units, const LockWaiting &waiting);
    /// Keeps others who hold the project beside this one from saving, for a short time.
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

    /// Remembers the count. To be called before the project is read, with or without the lock.
    void beginReading();
    /// Returns whether another program may have changed the project since beginReading(). To be asked only while
    /// the lock is held.
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
    std::optional<std::string> seen_;   ///< the count that belongs to what was read, if any does
};

/// Returns the programs that change the project now; empty if there are none. For programs that only read.
[[nodiscard]] ORCHARD_API std::string programsChanging(const std::string &projectFile);

} // namespace orchard
