// Defines OperationOptions, the command-line options shared by all commands that run an operation.
#pragma once

#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/operation/Operation.h"
#include "apps/orchard-cm/options/Command.h"

#include <string>
#include <vector>

class IProject;
class IUnit;

namespace orchard_cm {

class OperationOptions {
  public:
    /// Declares UNIT... and --recursive.
    void declareUnits(CLI::App &app);
    /// Also declares --archive, with which the words are files of the archive.
    void declareUnitsOrFiles(CLI::App &app, const char *archiveHelp);
    void declareLabel(CLI::App &app, const char *help);

    [[nodiscard]] bool recursive() const { return recursive_; }
    [[nodiscard]] bool archive() const { return archive_; }
    [[nodiscard]] const std::string &label() const { return label_; }

    /// Runs the operation on the named units or files, reports the result, and saves what it changed in the model.
    /// The entry for the archive may be null if --archive is not declared. Throws a Failure, before anything is
    /// done, for a name that matches no unit, for a label that can't be part of a command line, and for a project
    /// that another program changes. Units looked up before may be gone after the call.
    ExitCode run(Context &context, const Operation &operation, const UnitEntry &onUnits,
                 const ArchiveEntry &onArchive = nullptr) const;
    /// Returns the named units, and with --recursive also the units below them.
    [[nodiscard]] std::vector<IUnit *> units(const IProject &project) const;

  private:
    [[nodiscard]] ProjectHold hold(Context &context, Changes changes) const;

    std::vector<std::string> words_;
    bool recursive_ = false;
    bool archive_ = false;
    std::string label_;
};

/// Throws a Failure for a label with a character that the tool's set refuses (property RefusedInLabel). If the set
/// has no such property, refuses the characters that a shell would interpret.
void requireLabel(const std::string &label);

} // namespace orchard_cm
