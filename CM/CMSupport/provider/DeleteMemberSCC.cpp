#include "CM/CMSupport/provider/DeleteMemberSCC.h"

#include "CM/CMSupport/core/UnitFiles.h"
#include "CM/CMSupport/provider/CommandOptions.h"
#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"

namespace {

constexpr auto source = "../CM/CMSupport/DeleteMemberSCC";

bool removesDirectories() {
    CString provider;
    CMProperty::getSCCToolName(provider);
    return provider.CompareNoCase("Tessera") == 0;
}

CString fileOf(const IUnit &unit) {
    return removesDirectories() && hasOwnDirectory(&unit) ? unit.getOwnDirectory() : unit.getFullFileName();
}

void remove(provider::ProviderRun &run, const CString &file, void *context, OutcomeReport &report) {
    SCCdll &library = CMProperty::getSCCdll();
    CString comment;
    const long result = run.call(library.SccRemove, context, {file}, comment.GetBuffer(0), 0L);
    if (result != SCC_OK) {
        SCCTextOutProc::InternalTextOutProc(result, 0);
    }
    provider::reportCall(report, library.SccRemove, result);
}

} // namespace

int DeleteMemberSCC::operator()(CMUnitList &units, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/,
                                bool /*hybrid*/) {
    provider::ProviderRun run(source);
    CMProperty::setVoidPvOptions();
    for (IUnit *const unit : units) {
        if (unit == nullptr) {
            continue;
        }
        OutcomeReport report(*unit);
        if (!report.mayBegin()) {
            continue;
        }
        pvContextStruct *const record = run.openContext("perform delete", unit, report);
        if (record != nullptr) {
            void *const context = record->getpvContextPtr();
            // Required: "GET", for every unit, and cancelling doesn't stop the removal
            // (DeleteByProvider.AsksForOptionsForEveryUnitAndIgnoresCancelling).
            provider::chooseOptions(run, context, SCC_COMMAND_REMOVE, "Before query for GET advanced options");
            remove(run, fileOf(*unit), context, report);
        }
        report.send();
        if (record == nullptr) {
            return 0;
        }
    }
    return 1;
}

int DeleteMemberSCC::DeleteDirectory(const CString &directory, CMArgumentList & /*args*/,
                                     CMDiagnosticList & /*diags*/) {
    provider::ProviderRun run(source);
    CMProperty::setVoidPvOptions();
    if (directory.IsEmpty()) {
        return 1;
    }
    OutcomeReport report(directory);
    pvContextStruct *const record = run.openContext("perform delete", nullptr, report);
    if (record != nullptr) {
        remove(run, directory, record->getpvContextPtr(), report);
    }
    report.send();
    return record != nullptr ? 1 : 0;
}
