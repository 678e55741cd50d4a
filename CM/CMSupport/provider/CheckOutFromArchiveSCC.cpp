#include "CM/CMSupport/provider/CheckOutFromArchiveSCC.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/core/PushedArgument.h"
#include "CM/CMSupport/provider/ItemReload.h"
#include "CM/CMSupport/provider/ProviderCheckOut.h"

namespace {

void checkOut(provider::ProviderCheckOut &run, CMArchiveItem &item, OutcomeReport &report) {
    void *const context = CMProperty::getPvContext();
    const CString file = item.getFileNameWithPath();
    if (!run.isWanted(item, file, run.stateOf(file, context), report)) {
        return;
    }
    const long result = run.checkOut({file}, context);
    provider::reportCall(report, CMProperty::getSCCdll().SccCheckout, result);
    if (result == SCC_OK && CMProperty::FileNeedsATM(&item)) { // required: a failure is not shown
        provider::reloadItem(run, item, report);
    }
}

} // namespace

int CheckOutFromArchiveSCC::operator()(CMArchiveItemList &items, CMArgumentList &args,
                                       CMDiagnosticList & /*diags*/) {
    if (core::isSaveOnCheckOutWanted()) {
        core::saveModel();
    }
    CMArchive archive("");
    const core::PushedArgument pushed(args, archive);
    if (!items.IsEmpty()) {
        core::openReloads();
    }
    provider::ProviderCheckOut run("../CM/CMSupport/CheckOutFromArchiveSCC", args, "label");
    run.readQuestion();
    for (CMArchiveItem *const item : items) {
        if (item == nullptr) {
            continue;
        }
        OutcomeReport report(*item);
        if (report.mayBegin()) {
            checkOut(run, *item, report);
            report.send();
        }
    }
    if (!items.IsEmpty()) {
        core::closeReloads();
    }
    return 0;
}
