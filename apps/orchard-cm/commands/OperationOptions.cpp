#include "apps/orchard-cm/commands/OperationOptions.h"

#include "CM/host/IProject.h"
#include "apps/orchard-cm/model/RefusedCharacters.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"
#include "apps/orchard-cm/operation/ArchiveNames.h"

#include <CLI/CLI.hpp>

namespace orchard_cm {

void OperationOptions::declareUnits(CLI::App &app) {
    app.add_flag("--recursive", recursive_, "Include all units below");
    app.add_option("UNIT", words_, "Units by name, path in the model or file")->required();
}

void OperationOptions::declareUnitsOrFiles(CLI::App &app, const char *archiveHelp) {
    app.add_flag("--recursive", recursive_, "Include all units below");
    app.add_flag("--archive", archive_, archiveHelp);
    app.add_option("UNIT", words_, "Units by name, path in the model or file; with --archive, files")->required();
}

void OperationOptions::declareLabel(CLI::App &app, const char *help) {
    app.add_option("--label", label_, help)->type_name("LABEL");
}

std::vector<IUnit *> OperationOptions::units(const IProject &project) const {
    auto units = unitsNamed(project, words_);
    return recursive_ ? withUnitsBelow(project, units) : units;
}

ProjectHold OperationOptions::hold(Context &context, Changes changes) const {
    if (changes == Changes::nothing) {
        return {};
    }
    // Files of the archive may be new to the model.
    return archive_ || changes == Changes::project
               ? context.session.holdAlone()
               : context.session.holdUnits([&] { return units(context.session.project()); });
}

ExitCode OperationOptions::run(Context &context, const Operation &operation, const UnitEntry &onUnits,
                               const ArchiveEntry &onArchive) const {
    const ProjectHold held = hold(context, operation.changes);
    const IProject &project = context.session.project();
    requireLabel(label_);
    const OperationReport report =
        archive_ ? operateOnArchive(context, archiveNames(project, words_, recursive_), operation, onArchive)
                 : operateOnUnits(context, units(project), operation, onUnits);
    const ExitCode code = writeResult(context, report, operation.wording);
    // A unit that is new or has another name is listed in its owner's file, which must be saved to keep it.
    context.session.saveIfModified();
    return code;
}

void requireLabel(const std::string &label) {
    if (const std::string fault = labelFault(label, refusedInLabel()); !fault.empty()) {
        throw Failure(ExitCode::usage, "the label can't be given to a tool: " + fault);
    }
}

} // namespace orchard_cm
