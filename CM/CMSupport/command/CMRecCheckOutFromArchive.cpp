#include "CM/CMSupport/command/CMRecCheckOutFromArchive.h"

#include "CM/CMSupport/command/CheckOutRun.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/host/IPN.h"

namespace {

class Run : public command::CheckOutRun<CMArchiveItem> {
  public:
    Run(CMArgumentList &args, CString &error)
        : CheckOutRun({.property = IPN::CMCheckOutFromArchive,
                       .source = "../CM/CMSupport/RecCheckOutFromArchive",
                       .beforeRun =
                           "Executing the following command to recursively check out the file(s) from the "
                           "archive: ",
                       .afterRun = "Recursive check out from the archive command returned the following: ",
                       .guard = CMORYHandler::ORYCheckOut,
                       .order = command::CommandTexts::Order::guardThenExpansion},
                      args, error) {}
};

} // namespace

int CMRecCheckOutFromArchive::operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    if (!items.IsEmpty()) {
        core::saveBeforeRecursiveCheckOut();
    }
    Run run(args, error);
    run.workAll(items);
    return run.result();
}
