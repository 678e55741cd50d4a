#include "CM/CMSupport/provider/ProviderRename.h"

#include "CM/CMSupport/core/UnitFiles.h"

namespace provider {

long callRename(ProviderRun &run, void *context, CString from, CString to, OutcomeReport &report) {
    SCCdll &library = CMProperty::getSCCdll();
    const long result = library.SccRename(context, run.window(), from.GetBuffer(0), to.GetBuffer(0));
    run.logResult(library.SccRename.name(), result);
    reportCall(report, library.SccRename, result);
    return result;
}

CString archivedName(const IUnit &unit) {
    return hasOwnDirectory(&unit) ? unit.getPersistAs() : unit.getFileName();
}

} // namespace provider
