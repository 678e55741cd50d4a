#include "CM/CMSupport/command/CMRecFetchFromArchive.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/host/IPN.h"

int CMRecFetchFromArchive::operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    command::CommandRun<CMArchiveItem> run(
        {.property = IPN::CMFetchFromArchive,
         .source = "../CM/CMSupport/RecFetchFromArchive",
         .beforeRun = "Executing the following command to recursively fetch the file(s) from the archive: ",
         .afterRun = "Recursive fetch from the archive command returned the following: "},
        args, error);
    run.workAll(items);
    return run.result();
}
