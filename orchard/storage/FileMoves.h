// Files that go from one place to another, some of which somebody else may have moved already. No file is ever
// written over.
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
        open,    ///< the file is where it was
        done,    ///< it is at its new place
        halfWay, ///< it has its new name, in the directory that is yet to be moved
        both,    ///< there is one at either place, both the unit's
        blocked, ///< something else is at its new place
        lost,    ///< it was there when makeRoom() looked, and is at none of these places
        none,    ///< there is no file, as of a unit that was never saved
    };
    struct Entry {
        UnitElement *unit;
        std::string from;
        std::string to;
        std::optional<std::size_t> directory; ///< the one that it goes with
        State state = State::none;
        bool wasThere = false; ///< when makeRoom() looked
        bool byUs = false;     ///< moved by carryOut()
        bool failed = false;   ///< carryOut() could not move it
    };

    std::size_t addDirectory(std::string from, std::string to);
    void add(UnitElement &unit, std::string from, std::string to, std::optional<std::size_t> directory);
    [[nodiscard]] const std::vector<Entry> &entries() const { return entries_; }

    /// Why a move can't be made, by what is on disk now: appended with the unit that it is about.
    void findFaults(std::vector<std::pair<const UnitElement *, std::string>> &faults) const;

    /// Makes the directories that files and directories go into, and remembers those for takeBack(); notes which
    /// files are there.
    void makeRoom();
    /// Looks where each file is.
    void look();
    /// Whether a file is in the state, as look() has seen it.
    [[nodiscard]] bool any(State state) const;
    /// Moves the files that are open. False if one stays where it is, which is told.
    [[nodiscard]] bool carryOut(Problems &problems);
    /// Moves back what carryOut() has moved, and takes away the directories that are empty again.
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

/// Whether something of the name is there, if only a link that leads nowhere.
[[nodiscard]] bool isThere(const std::string &path);
/// 0, or the number of the system's error. A target that is there is one.
[[nodiscard]] int moveWithoutReplacing(const std::string &from, const std::string &to);

} // namespace orchard
