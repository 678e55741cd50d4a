#include "CM/CMSupport/command/CMCheckIn.h"

#include "CM/CMSupport/command/UpdatingRun.h"
#include "CM/host/IPN.h"

int CMCheckIn::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool /*hybrid*/) {
    return command::updateUnits(*this,
                                {.property = IPN::CMCheckIn,
                                 .source = "../CM/CMSupport/CheckIn",
                                 .beforeRun = "Executing the following command to check in the file: ",
                                 .afterRun = "Check in command returned the following: ",
                                 .guard = CMORYHandler::ORYCheckIn},
                                command::SaveFirst::yes, units, args, diags);
}
