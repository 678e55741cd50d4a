#include "CM/CMSupport/command/CMFetchFromArchive.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/host/IPN.h"

int CMFetchFromArchive::operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    command::CommandRun<CMArchiveItem> run(
        {.property = IPN::CMFetchFromArchive,
         .source = "../CM/CMSupport/FetchFromArchive",
         .beforeRun = "Executing the following command to fetch the file from the archive: ",
         .afterRun = "Fetch from the archive command returned the following: "},
        args, error);
    run.workAll(items);
    return run.result();
}
