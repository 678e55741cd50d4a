#include "CM/CMSupport/command/CMRecUnCheckout.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/host/IPN.h"

namespace {

class Run : public command::CommandRun<IUnit> {
  public:
    Run(CMArgumentList &args, CString &error)
        : CommandRun({.property = IPN::CMUnLockItem, // undo has no template of its own
                      .source = "../CM/CMSupport/RecUnCheckout",
                      .beforeRun = "Executing the following command to recursively uncheck out the file(s): ",
                      .afterRun = "Recursive uncheck out command returned the following: "},
                     args, error) {}
};

} // namespace

int CMRecUnCheckout::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags,
                                bool /*hybrid*/) {
    if (units.IsEmpty()) {
        // Required, unlike in the other operations.
        // Test: UndoWithoutReload.RecursivelyOfAnEmptyListSucceedsEvenWithoutATool.
        return 1;
    }
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    Run run(args, error);
    run.workAll(units);
    return run.result();
}
