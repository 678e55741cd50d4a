#include "CM/CMSupport/command/CMHistory.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/core/PropertyKeys.h"

int CMHistory::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool /*hybrid*/) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    command::CommandRun<IUnit> run(
        {.property = keys::history,
         .source = "../CM/CMSupport/History",
         .beforeRun = "Executing the following command to show the history of the file: ",
         .afterRun = "History command returned the following: "},
        args, error);
    run.workAll(units);
    return run.result();
}
