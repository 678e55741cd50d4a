#include "CM/CMSupport/command/CMRecCheckOut.h"

#include "CM/CMSupport/command/ArchiveSelection.h"
#include "CM/CMSupport/command/CheckOutRun.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/host/IPN.h"

namespace {

class Run : public command::CheckOutRun<IUnit> {
  public:
    Run(CMArgumentList &args, CString &error)
        : CheckOutRun({.property = IPN::CMCheckOut,
                       .source = "../CM/CMSupport/RecCheckOut",
                       .beforeRun = "Executing the following command to recursively check out the file(s): ",
                       .afterRun = "Recursive check out command returned the following: ",
                       .guard = CMORYHandler::ORYCheckOut,
                       .order = command::CommandTexts::Order::guardThenExpansion},
                      args, error) {}

  protected:
    void prepare(IUnit &unit) override { command::selectArchive(unit); }
};

} // namespace

int CMRecCheckOut::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool /*hybrid*/) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    core::saveBeforeCheckOut(units);
    Run run(args, error);
    run.workAll(units);
    return run.result();
}
