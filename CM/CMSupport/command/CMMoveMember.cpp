#include "CM/CMSupport/command/CMMoveMember.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/NameGuard.h"
#include "CM/CMSupport/command/PathPlaceholders.h"
#include "CM/CMSupport/command/ReportedExpansion.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/IProject.h"

namespace {

/// Moves units one by one. Fills in those placeholders of their templates that the expansion doesn't know.
class Run : public command::CommandRun<IUnit> {
  public:
    Run(const char *beforeRun, const char *afterRun, bool hybrid, CMArgumentList &args, CString &error)
        : CommandRun({.property = {},
                      .source = "../CM/CMSupport/MoveMember",
                      .beforeRun = beforeRun,
                      .afterRun = afterRun},
                     args, error),
          hybrid_(hybrid) {}

    /// Moves the unit's file. Returns false if there is no template for it. `isPackage`: the unit's own directory
    /// moves.
    [[nodiscard]] bool move(IUnit &unit, const command::Directories &directories, bool isPackage) {
        OutcomeReport withoutRun(unit); // sent if no command is made for the unit
        if (!hasFile(unit) || directories.from == directories.to) {
            withoutRun.sendAs(CMOutcome::Kind::nothingToDo);
            return true;
        }
        const CString persistAs = unit.getPersistAs();
        key_ = keys::moveDirectory;
        if (isPackage || persistAs.IsEmpty()) {
            template_.Empty();
        } else {
            template_ = read(key_);
        }
        const bool movesDirectory = !template_.IsEmpty();
        if (!movesDirectory) {
            key_ = keys::move;
            template_ = read(key_);
        }
        if (template_.IsEmpty()) {
            withoutRun.lacksCommand(key_);
            withoutRun.send();
            return false;
        }
        directories_ = {directories.from, directories.to, persistAs};
        if (!command::mayReachCommand(directories_, withoutRun)) {
            refuse();
            withoutRun.send();
            return true;
        }
        command::fillInMove(template_, directories, unit, {.isPackage = isPackage, .asDirectory = movesDirectory});
        work(&unit);
        return true;
    }

  protected:
    [[nodiscard]] command::Names namesBeside() override {
        command::Names names = CommandRun::namesBeside();
        names.insert(names.end(), directories_.begin(), directories_.end());
        return names;
    }
    int expand(IUnit & /*unit*/, CString &command) override {
        return command::expandTemplate(template_, key_, arguments(), command, report());
    }

  private:
    static bool hasFile(const IUnit &unit) {
        return unit.isSaveUnit() || dynamic_cast<const IEmbededFile *>(&unit) != nullptr;
    }
    [[nodiscard]] CString read(const CString &key) const {
        CString value;
        CMProperty::getToolPropertyValue(key, value, hybrid_);
        return value;
    }

    bool hybrid_;
    command::Names directories_; ///< of the current unit
    CString key_;                ///< of the current unit's template
    CString template_;           ///< of the current unit, with its placeholders filled in
};

} // namespace

int CMMoveMember::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) {
    if (units.IsEmpty()) {
        return 1; // required even without a tool: MoveMember.AnEmptyListGivesOneEvenWithoutATool
    }
    CString error;
    if (!command::isToolConfigured(*this, hybrid, error, diags)) {
        return 0;
    }
    Run run("Executing the following command to move the file: ", "Move file command returned the following: ",
            hybrid, args, error);
    auto position = units.GetHeadPosition();
    const auto next = [&]() -> IUnit * { return position ? units.GetNext(position) : nullptr; };
    while (position) {
        IUnit *const unit = next();
        const IUnit *const oldOwner = next();
        const IUnit *const newOwner = next();
        if (unit != nullptr && oldOwner != nullptr && newOwner != nullptr &&
            !run.move(*unit, {oldOwner->getPartsDirectory(), newOwner->getPartsDirectory()}, false)) {
            return 0;
        }
    }
    // One even after failed runs is required: MoveMember.ARunThatFailsDoesNotChangeTheResult
    return run.hasRefused() ? 0 : 1;
}

int CMMoveMember::movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath,
                                     const CString &newPath, CMArgumentList &args, CMDiagnosticList &diags,
                                     bool hybrid) {
    CString error;
    if (!command::isToolConfigured(*this, hybrid, error, diags)) {
        return 0;
    }
    Run run("Executing the following command to move the directory: ",
            "Move directory command returned the following: ", hybrid, args, error);
    for (IUnit *const unit : units) {
        if (unit != nullptr && !run.move(*unit, {oldPath, newPath}, unit == package)) {
            return 0;
        }
    }
    // One even after failed runs is required: MovePackage.FailuresNeitherStopNorChangeTheResult
    return run.hasRefused() ? 0 : 1;
}
