#include "CM/CMSupport/command/CMFetch.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/host/IPN.h"

int CMFetch::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) {
    CString error;
    if (!command::isToolConfigured(*this, hybrid, error, diags)) {
        return 0;
    }
    command::CommandRun<IUnit> run({.property = IPN::CMFetch,
                                    .source = "../CM/CMSupport/Fetch",
                                    .beforeRun = "Executing the following command to fetch the file: ",
                                    .afterRun = "Fetch command returned the following: ",
                                    .guard = CMORYHandler::ORYFetch,
                                    .hybrid = hybrid},
                                   args, error);
    run.workAll(units);
    return run.result();
}
