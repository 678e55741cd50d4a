#include "CM/CMSupport/provider/HistorySCC.h"

#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/provider/CommandOptions.h"
#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"

#include <utility>

namespace {

/// Shows the history of all items. A null entry counts as a file. `pathOf` gives the file of an item.
template <class LIST, class PATH>
void show(provider::ProviderRun &run, const LIST &items, void *context, PATH pathOf) {
    CMProperty::setVoidPvOptions();
    if (!provider::chooseOptions(run, context, SCC_COMMAND_HISTORY, "Before query for HISTORY advanced options")) {
        OutcomeReport cancelled;
        cancelled.fail(CMOutcome::Kind::declined, resources::Text::resultCancelled);
        cancelled.send();
        return;
    }
    provider::CallFiles call;
    for (auto *const item : items) {
        if (item == nullptr) {
            call.addEmpty();
            continue;
        }
        OutcomeReport report(*item);
        if (report.mayBegin()) {
            call.add(pathOf(*item), std::move(report));
        }
    }
    SCCdll &library = CMProperty::getSCCdll();
    const long result = run.call(library.SccHistory, context, call.files, 0L);
    if (result != SCC_OK) {
        SCCTextOutProc::InternalTextOutProc(result, 0);
    }
    call.send(library.SccHistory, result);
}

/// The guard only finds the path.
CString pathOfUnit(IUnit &unit) {
    CMORYHandler guard;
    CString path = provider::guardedPath(guard, unit, CMORYHandler::ORYInspect);
    guard.rollBack();
    return path;
}

} // namespace

int HistorySCC::operator()(CMUnitList &units, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/) {
    core::saveModel();
    provider::ProviderRun run("../CM/CMSupport/HistorySCC");
    OutcomeReport report;
    pvContextStruct *const record = provider::contextFor(provider::headOf(units), report);
    if (report.hasFailed()) {
        report.send();
    }
    if (record != nullptr) {
        show(run, units, record->getpvContextPtr(), pathOfUnit);
    }
    return 0;
}

int HistorySCC::Alt(CMArchiveItemList &items, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/) {
    core::saveModel();
    provider::ProviderRun run("../CM/CMSupport/HistorySCC");
    show(run, items, CMProperty::getPvContext(),
         [](const CMArchiveItem &item) { return item.getFileNameWithPath(); });
    return 0;
}
