#include "CM/CMSupport/provider/PropertiesSCC.h"

#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/provider/CommandOptions.h"
#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"

namespace {

long show(provider::ProviderRun &run, const IUnit &unit, void *context, OutcomeReport &report) {
    SCCdll &library = CMProperty::getSCCdll();
    // Required: a backslash on every system.
    CString path = provider::withSingleBackslashes(unit.getOwnDirectory() + '\\' + unit.getFileName());
    run.log().before(library.SccProperties.name());
    const long result = library.SccProperties(context, run.window(), path.GetBuffer(0));
    run.logResult(library.SccProperties.name(), result);
    provider::reportCall(report, library.SccProperties, result);
    return result;
}

} // namespace

int PropertiesSCC::operator()(CMUnitList &units, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/) {
    core::saveModel();
    provider::ProviderRun run("../CM/CMSupport/PropertiesSCC");
    CMProperty::setVoidPvOptions();
    bool isFirst = true;
    long last = SCC_OK;
    for (IUnit *const unit : units) {
        if (unit == nullptr) {
            continue;
        }
        OutcomeReport report(*unit);
        if (!report.mayBegin()) {
            continue;
        }
        pvContextStruct *const record = run.openContext("invoke SccProperties", unit, report);
        if (record == nullptr) {
            report.send();
            return 0;
        }
        void *const context = record->getpvContextPtr();
        if (isFirst && !provider::chooseOptions(run, context, SCC_COMMAND_PROPERTIES,
                                                "Before query for PROPERTIES advanced options")) {
            report.fail(CMOutcome::Kind::declined, resources::Text::resultCancelled);
            report.send();
            break;
        }
        isFirst = false;
        last = show(run, *unit, context, report);
        report.send();
    }
    if (last != SCC_OK) {
        SCCTextOutProc::InternalTextOutProc(last, 0);
    }
    return 0;
}
