// Reads a unit file, and all unit files that it lists, into elements.
#pragma once

#include "orchard/model/UnitElement.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/ParallelReading.h"
#include "orchard/storage/Projects.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace orchard {

class ModelLoader {
  public:
    ModelLoader(Model &model, const OpenOptions &options) : model_(model), options_(options) {}

    // These are called on the caller's thread, in the order in which the files list the units.
    /// Called for each unit that a file lists, before its file is read; false leaves the unit a stub.
    std::function<bool(UnitElement &)> wanted;
    /// Called for each listed unit whose file is missing; true suppresses the warning.
    std::function<bool(UnitElement &)> missing;
    /// Called with the problem for each listed unit whose file can't be read or does not contain that unit.
    /// Returning true leaves the unit a stub and doesn't report the problem.
    std::function<bool(UnitElement &, const Problem &)> broken;
    /// Called for each element once it is complete; returns a fault of the element ("" for none).
    std::function<std::string(Element &)> admit;

    /// Reads the file of `unit` into it, then the files of the units that it lists, and so on level by level.
    /// Reads all files, even after a broken one. A listed unit whose file is missing stays a stub, with a warning.
    /// Returns false if anything was wrong (see problems()) or if the reading was cancelled.
    bool load(UnitElement &unit);
    /// The same, with the text of the unit's own file given.
    bool load(UnitElement &unit, const FileText &text);

    [[nodiscard]] Problems &problems() { return problems_; }
    [[nodiscard]] bool cancelled() const { return cancelled_; }

  private:
    bool run(UnitElement &unit, const FileText *known);
    [[nodiscard]] bool runLevel(std::span<ListedUnit> level);
    [[nodiscard]] bool take(UnitElement &unit, UnitReading reading);
    void enter(UnitElement &unit, UnitReading reading);
    [[nodiscard]] bool handleMissing(UnitElement &unit);
    [[nodiscard]] bool staysUnloaded(UnitElement &unit, UnitReading &reading);
    [[nodiscard]] bool admitContent(UnitElement &unit);
    [[nodiscard]] Problem problemOf(const UnitElement &unit, const Element &element, std::string why) const;
    [[nodiscard]] bool mayContinue();

    Model &model_;
    const OpenOptions &options_;
    Problems problems_;
    bool cancelled_ = false;
    // Used during load():
    UnitElement *first_ = nullptr;
    const FileText *known_ = nullptr;   ///< the text of the first unit's file, if it was given
    std::vector<ListedUnit> nextLevel_; ///< units listed by the files of the current level
    std::size_t listed_ = 1;            ///< number of units known so far
    std::size_t taken_ = 0;             ///< number of units read and entered so far
    std::vector<Element *> open_;       ///< reused to save memory allocations
};

/// The message about a unit that stays a stub because of a problem with its file.
[[nodiscard]] Problem unloadedFor(const UnitElement &unit, Problem problem);

} // namespace orchard
