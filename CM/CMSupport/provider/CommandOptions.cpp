#include "CM/CMSupport/provider/CommandOptions.h"

#include "CM/CMSupport/core/DebugTrace.h"

namespace provider {

bool chooseOptions(const ProviderRun &run, void *context, SCCCOMMAND command, const CString &trace) {
    debugTrace({trace.view()});
    SCCdll &library = CMProperty::getSCCdll();
    if (library.SccGetCommandOptions(context, run.window(), command, nullptr) != SCC_I_ADV_SUPPORT) {
        return true;
    }
    return library.SccGetCommandOptions(context, run.window(), command, CMProperty::getPvOptionsPtr()) == SCC_OK;
}

} // namespace provider
