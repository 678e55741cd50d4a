// Implements UnitChange: the base class of changes, and what they share.
#pragma once

#include "orchard/model/Model.h"
#include "orchard/storage/UnitChange.h"

#include <string>
#include <vector>

namespace orchard {

class UnitChange::Work {
  public:
    virtual ~Work() = default;
    virtual void begin() = 0;
    virtual void cancel() = 0;
    virtual Problems finish(FilesBy by) = 0;

    Problems problems;
    std::vector<FileChange> files;
    std::vector<OwnerChange> owners;
    std::vector<IUnit *> units;
    std::string oldPath;
    std::string newPath;
    bool stands = false;
    bool complete = true;

  protected:
    enum class Phase { planned, begun, over };
    Phase phase_ = Phase::planned;

    void refuse(const UnitElement &unit, std::string why);
};

/// Returns the units without those that are below other units in the list, each once, in order. The caller checks
/// that all are in one project.
[[nodiscard]] std::vector<UnitElement *> outermost(const std::vector<IUnit *> &units);

[[nodiscard]] std::unique_ptr<UnitChange::Work> planRename(IUnit &unit, std::string_view name);
[[nodiscard]] std::unique_ptr<UnitChange::Work> planMove(const std::vector<IUnit *> &units, IUnit &newOwner);
[[nodiscard]] std::unique_ptr<UnitChange::Work> planRemoval(const std::vector<IUnit *> &units);

/// Returns whether the directory contains only files of `root` and of units below it, or doesn't exist. Looks only
/// at the files on disk, so the cost depends on the size of the directory.
[[nodiscard]] bool isDirectoryOf(const UnitElement &root, const std::string &directory);
/// A unit whose file is in the directory and that is neither `root` nor below it; null if there is none.
[[nodiscard]] UnitElement *otherUnitIn(const UnitElement &root, const std::string &directory);
/// The entry for a single file; notes another unit that uses the unit's own directory.
[[nodiscard]] FileChange fileChangeOf(UnitElement &unit, std::string from, std::string to);

} // namespace orchard
