// OperationOptions: what the commands that run an operation have in common on the command line.
#pragma once

#include "apps/orchard-cm/commands/Command.h"
#include "apps/orchard-cm/operation/Operation.h"

#include <string>
#include <vector>

class IProject;
class IUnit;

namespace orchard_cm {

class OperationOptions {
  public:
    /// UNIT... and --recursive.
    void declareUnits(CLI::App &app);
    /// The same, and --archive, with which the words are files of the archive.
    void declareUnitsOrFiles(CLI::App &app, const char *archiveHelp);
    void declareLabel(CLI::App &app, const char *help);

    [[nodiscard]] bool recursive() const { return recursive_; }
    [[nodiscard]] bool archive() const { return archive_; }
    [[nodiscard]] const std::string &label() const { return label_; }

    /// Runs the operation on what was named, tells it, and saves what it changed in the model. The entry for the
    /// archive may be null where --archive is not declared. Throws a Failure for a name that fits no unit, and for
    /// a label that can't go into a command line; nothing has been done then.
    ExitCode run(Context &context, const Operation &operation, const UnitEntry &onUnits,
                 const ArchiveEntry &onArchive = nullptr) const;
    /// The units that were named, with those below if that was asked for.
    [[nodiscard]] std::vector<IUnit *> units(const IProject &project) const;

  private:
    std::vector<std::string> words_;
    bool recursive_ = false;
    bool archive_ = false;
    std::string label_;
};

/// Throws a Failure for a label that the tool's set refuses (property RefusedInLabel), or any shell without one.
void requireLabel(const std::string &label);

} // namespace orchard_cm
