#include "CM/CMSupport/provider/RecCheckOutFromArchiveSCC.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/provider/ProviderCheckOut.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"

int RecCheckOutFromArchiveSCC::operator()(CMArchiveItemList &items, CMArgumentList &args,
                                          CMDiagnosticList & /*diags*/) {
    if (items.IsEmpty()) {
        provider::showNothingSelected();
        return 0;
    }
    core::saveBeforeRecursiveCheckOut();
    provider::ProviderCheckOut run("../CM/CMSupport/RecCheckOutFromArchiveSCC", args, "label");
    void *const context = CMProperty::getPvContext();
    provider::CallFiles call;
    const auto name = [](const CMArchiveItem &item) { return item.getFileNameWithPath(); };
    const bool wasOutOfDate = provider::collectUpToDate(run, items, context, call, name, name);
    const long result = run.checkOut(call.files, context);
    if (result != SCC_OK && !wasOutOfDate) {
        SCCTextOutProc::InternalTextOutProc(result, 0);
    }
    call.send(CMProperty::getSCCdll().SccCheckout, result);
    return 0;
}
