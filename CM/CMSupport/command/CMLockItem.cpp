#include "CM/CMSupport/command/CMLockItem.h"

#include "CM/CMSupport/command/UpdatingRun.h"
#include "CM/host/IPN.h"

int CMLockItem::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool /*hybrid*/) {
    return command::updateUnits(*this,
                                {.property = IPN::CMLockItem,
                                 .source = "../CM/CMSupport/LockItem",
                                 .beforeRun = "Executing the following command to lock the file: ",
                                 .afterRun = "Lock command returned the following: "},
                                command::SaveFirst::no, units, args, diags);
}
