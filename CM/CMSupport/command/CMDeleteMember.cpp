#include "CM/CMSupport/command/CMDeleteMember.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/LoggedRun.h"
#include "CM/CMSupport/command/NameGuard.h"
#include "CM/CMSupport/command/ReportedExpansion.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/UnitFiles.h"
#include "CM/host/IPN.h"
#include "CM/host/Utilities.h"

#include <utility>

namespace {

constexpr auto source = "../CM/CMSupport/DeleteMember";

CString readDirectoryTemplate(bool hybrid) {
    CString value;
    CMProperty::getToolPropertyValue(keys::deleteDirectory, value, hybrid);
    return value;
}

class Run : public command::CommandRun<IUnit> {
  public:
    Run(bool hybrid, CMArgumentList &args, CString &error)
        : CommandRun({.property = IPN::Delete,
                      .source = source,
                      .beforeRun = "Executing the following command to delete the file: ",
                      .afterRun = "Delete file command returned the following: "},
                     args, error),
          hybrid_(hybrid) {}

  protected:
    int expand(IUnit &unit, CString &command) override {
        if (!readDirectoryTemplate(hybrid_).IsEmpty() && hasOwnDirectory(&unit)) {
            return command::expandProperty(keys::deleteDirectory, arguments(), command, hybrid_, report());
        }
        // Required: without the hybrid flag.
        // Test: DeleteMember.InHybridModeOnlyTheTemplateForDirectoriesIsThatOfTheProvidersName.
        return CommandRun::expand(unit, command);
    }

  private:
    bool hybrid_;
};

int runForDirectory(const CString &directory, bool hybrid, CString &error, OutcomeReport &report) {
    CString command = readDirectoryTemplate(hybrid);
    if (command.IsEmpty()) {
        report.lacksCommand(keys::deleteDirectory);
        return 0;
    }
    CString root;
    if (oqGetRoot(root, error) != 1) {
        report.lacksValue(keys::deleteDirectory, "$OQROOT");
        return 0;
    }
    report.uses(keys::deleteDirectory);
    if (!command::mayReachCommand({directory}, report)) {
        return 0;
    }
    // Required: nothing else is expanded. Test:
    // DeleteDirectory.ReplacesTheRootAndTheDirectoryAndExpandsNothingElse.
    command.Replace("$OQROOT", root);
    command.Replace("$UnitDirPath", directory);
    CString output;
    LogTrace::Log log(LogTrace::Log::cm);
    const int result = command::runLogged(log,
                                          {.source = source,
                                           .before = "Executing the following command to delete the directory: ",
                                           .after = "Delete directory command returned the following: "},
                                          command, output, error, report);
    report.printed(std::move(output));
    return result;
}

} // namespace

int CMDeleteMember::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) {
    CString error;
    if (!command::isToolConfigured(*this, hybrid, error, diags)) {
        return 0;
    }
    Run run(hybrid, args, error);
    run.workAll(units);
    return run.hasRefused() ? 0 : run.result();
}

int CMDeleteMember::deleteDirectory(const CString &directory, CMArgumentList & /*args*/, CMDiagnosticList &diags,
                                    bool hybrid) {
    CString error;
    if (!command::isToolConfigured(*this, hybrid, error, diags)) {
        return 0;
    }
    OutcomeReport report(directory);
    const int result = runForDirectory(directory, hybrid, error, report);
    report.send();
    return result;
}
