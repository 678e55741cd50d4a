#include "CM/CMSupport/command/CMRecCheckIn.h"

#include "CM/CMSupport/command/UpdatingRun.h"
#include "CM/host/IPN.h"

int CMRecCheckIn::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool /*hybrid*/) {
    return command::updateUnits(
        *this,
        {.property = IPN::CMCheckIn,
         .source = "../CM/CMSupport/RecCheckIn",
         .beforeRun = "Executing the following command to recursively check in the file(s): ",
         .afterRun = "Recursive check in command returned the following: ",
         .guard = CMORYHandler::ORYCheckIn},
        command::SaveFirst::yes, units, args, diags);
}
