#include "CM/CMSupport/command/CMDeleteMember.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/LoggedRun.h"
#include "CM/CMSupport/command/NameGuard.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "CM/host/Utilities.h"

namespace {

constexpr auto source = "../CM/CMSupport/DeleteMember";
constexpr auto directoryKey = "DeleteDirectory";

CString readDirectoryTemplate(bool hybrid) {
    CString value;
    CMProperty::getToolPropertyValue(directoryKey, value, hybrid);
    return value;
}

bool hasOwnDirectory(const IUnit &unit) {
    const auto *const subsystem = dynamic_cast<const ISubsystem *>(&unit);
    return subsystem != nullptr && !subsystem->getPersistAs().IsEmpty();
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
        if (!readDirectoryTemplate(hybrid_).IsEmpty() && hasOwnDirectory(unit)) {
            return CMProperty::ExpandProperty(directoryKey, arguments(), command, errorText(), hybrid_);
        }
        return CommandRun::expand(unit, command); // without the hybrid flag, deliberately
    }

  private:
    bool hybrid_;
};

} // namespace

int CMDeleteMember::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) {
    CString error;
    if (!command::isToolConfigured(*this, hybrid, error, diags)) {
        return 0;
    }
    Run run(hybrid, args, error);
    run.workAll(units);
    return run.result();
}

int CMDeleteMember::deleteDirectory(const CString &directory, CMArgumentList & /*args*/, CMDiagnosticList &diags,
                                    bool hybrid) {
    CString error;
    if (!command::isToolConfigured(*this, hybrid, error, diags)) {
        return 0;
    }
    CString command = readDirectoryTemplate(hybrid);
    CString root;
    if (command.IsEmpty() || oqGetRoot(root, error) != 1 || !command::mayReachCommand({directory})) {
        return 0;
    }
    command.Replace("$OQROOT", root);
    command.Replace("$UnitDirPath", directory); // these two are all that is expanded: deliberate
    CString output;
    LogTrace::Log log(LogTrace::Log::cm);
    return command::runLogged(log,
                              {.source = source,
                               .before = "Executing the following command to delete the directory: ",
                               .after = "Delete directory command returned the following: "},
                              command, output, error);
}
