// Moves files, some of which a tool may have moved already. Never overwrites a file.
#pragma once

#include "orchard/model/UnitElement.h"
#include "orchard/storage/Problem.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orchard {

class FileMoves {
  public:
    enum class State {
        open,    ///< the file is still at its old place
        done,    ///< the file is at its new place
        halfWay, ///< it has its new name, in the directory that has not been moved yet
        both,    ///< there is a file at each place, both the unit's
        blocked, ///< another file is at its new place
        lost,    ///< it was there when makeRoom() looked, and is at none of these places now
        none,    ///< there is no file, for example of a unit that was never saved
    };
    struct Entry {
        UnitElement *unit;
        std::string from;
        std::string to;
        std::optional<std::size_t> directory; ///< the directory that it moves with
        State state = State::none;
        bool wasThere = false; ///< at the time of makeRoom()
        bool byUs = false;     ///< moved by carryOut()
        bool failed = false;   ///< carryOut() could not move it
    };

    std::size_t addDirectory(std::string from, std::string to);
    void add(UnitElement &unit, std::string from, std::string to, std::optional<std::size_t> directory);
    [[nodiscard]] const std::vector<Entry> &entries() const { return entries_; }

    /// Appends the reasons why a move can't be made, given what is on disk now, each with its unit.
    void findFaults(std::vector<std::pair<const UnitElement *, std::string>> &faults) const;

    /// Creates the target directories, remembers them for takeBack(), and records which files exist.
    void makeRoom();
    /// Finds out where each file is.
    void look();
    /// Whether any file is in this state, as of the last look().
    [[nodiscard]] bool any(State state) const;
    /// Moves the files that are still open. Returns false and adds a problem if one can't be moved.
    [[nodiscard]] bool carryOut(Problems &problems);
    /// Moves back what carryOut() moved, and removes the directories that makeRoom() created if they are empty.
    void takeBack(Problems &problems);

  private:
    struct Directory {
        std::string from;
        std::string to;
        std::vector<std::size_t> entries;
    };
    [[nodiscard]] std::string halfWayPlace(const Entry &entry) const;
    [[nodiscard]] std::string placeInMoved(const Entry &entry) const;
    bool moveWhole(const Directory &directory);
    bool moveOne(const std::string &from, const std::string &to, Problems &problems);

    std::vector<Entry> entries_;
    std::vector<Directory> directories_;
    std::vector<std::pair<std::string, std::string>> moved_;
    std::vector<std::string> made_;
};

/// Whether something of this name exists, even if only a dangling link.
[[nodiscard]] bool isThere(const std::string &path);
/// Returns 0, or the number of the system's error. An existing target is an error.
[[nodiscard]] int moveWithoutReplacing(const std::string &from, const std::string &to);

} // namespace orchard
