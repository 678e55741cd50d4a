// Implements UnitChange: the base class of changes, and what they share. A change consists of a plan for the disk,
// computed while the model stays as it is, and of what the derived class does to the model.
#pragma once

#include "orchard/change/ChangeSteps.h"
#include "orchard/change/UnitChange.h"
#include "orchard/model/Model.h"
#include "orchard/storage/UnitWriter.h"

#include <string>
#include <vector>

namespace orchard {

class UnitChange::Work {
  public:
    explicit Work(Model *model) : model_(model) {}
    virtual ~Work() = default;
    Work(const Work &) = delete;
    Work &operator=(const Work &) = delete;

    [[nodiscard]] Problems begin(FilesBy by, std::string_view command);
    void cancel();
    [[nodiscard]] std::vector<FileChange> halfWay() const;
    [[nodiscard]] Problems finish(FilesBy by);

    Problems problems;
    std::vector<FileChange> files;
    std::vector<OwnerChange> owners;
    std::vector<IUnit *> units;
    std::string oldPath;
    std::string newPath;
    bool stands = false;
    bool complete = true;
    bool isOpen = false;

  protected:
    void refuse(const UnitElement &unit, std::string why);
    /// Adds the text that a unit's file is to get, if it differs from the present one.
    void addText(UnitElement &unit, const Intention &intention, ChangePlan::Path path, bool own);
    /// Change the model as the plan says, and back.
    virtual void apply() {}
    virtual void revert() {}
    /// Changes the model after the files.
    virtual void settle(const Decision &decision, FilesBy by) = 0;

    Model *model_;
    ChangePlan plan_;
    std::vector<UnitElement *> written_; ///< for each text of the plan, the unit

  private:
    void noteTexts(const Decision &decision);

    enum class Phase { planned, begun, over };
    Phase phase_ = Phase::planned;
};

/// Returns the units without those that are below other units in the list, each once, in order. The caller checks
/// that all are in one project.
[[nodiscard]] std::vector<UnitElement *> outermost(const std::vector<IUnit *> &units);

/// Returns whether the directory contains only files of `root` and of units below it, or doesn't exist. Looks only
/// at the files on disk, so the cost depends on the size of the directory.
[[nodiscard]] bool isDirectoryOf(const UnitElement &root, const std::string &directory);
/// The entry for a single file; notes another unit that uses the unit's own directory.
[[nodiscard]] FileChange fileChangeOf(UnitElement &unit, std::string from, std::string to);

} // namespace orchard
