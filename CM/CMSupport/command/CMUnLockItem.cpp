#include "CM/CMSupport/command/CMUnLockItem.h"

#include "CM/CMSupport/command/UpdatingRun.h"
#include "CM/host/IPN.h"

int CMUnLockItem::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool /*hybrid*/) {
    return command::updateUnits(*this,
                                {.property = IPN::CMUnLockItem,
                                 .source = "../CM/CMSupport/UnLockItem",
                                 .beforeRun = "Executing the following command to unlock the file: ",
                                 .afterRun = "Unlock command returned the following: ",
                                 .guard = CMORYHandler::ORYInspect},
                                command::SaveFirst::no, units, args, diags);
}
