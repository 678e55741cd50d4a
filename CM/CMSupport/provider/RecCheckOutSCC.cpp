#include "CM/CMSupport/provider/RecCheckOutSCC.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/provider/ProviderCheckOut.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/CMSupport/provider/SccQuery.h"
#include "CM/host/IPN.h"

namespace {

/// A missing property asks for the save as well, other than before a plain check out.
bool isSaveWanted() {
    const IProperty *const property =
        CMProperty::getToolProperty(IPN::CMSaveOnCheckOut, nullptr, IProperty::inherited, false);
    return (property == nullptr || property->getBool()) && CMProperty::saveOnCheckout(-1) != 0;
}

} // namespace

int RecCheckOutSCC::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList & /*diags*/,
                               bool /*hybrid*/) {
    if (units.IsEmpty()) {
        provider::showNothingSelected();
        return 0;
    }
    if (isSaveWanted()) {
        core::saveModel();
    }
    provider::ProviderCheckOut run("../CM/CMSupport/RecCheckOutSCC", args, "label",
                                   provider::ProviderRun::LogsReturn::no);
    pvContextStruct *const record = run.openSharedContext("perform check out", provider::headOf(units));
    if (record == nullptr) {
        return 0;
    }
    void *const context = record->getpvContextPtr();
    CMORYHandler guard;
    provider::CallFiles call;
    provider::collectUpToDate(
        run, units, context, call, [](const IUnit &unit) { return unit.getFullFileName(); },
        [&guard](IUnit &unit) { return provider::guardedPath(guard, unit, CMORYHandler::ORYCheckOut); });
    const long result = run.checkOut(call.files, context);
    if (result == SCC_OK) {
        guard.commit();
        run.log().write("Updating CM Status for checked out units");
        SccQuery::queryAndSetStatus(units, context);
    } else {
        guard.rollBack();
        SCCTextOutProc::InternalTextOutProc(result, 0);
    }
    call.send(CMProperty::getSCCdll().SccCheckout, result);
    return 0;
}
