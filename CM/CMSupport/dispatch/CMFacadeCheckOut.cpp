// The check-out entries of the facade.
#include "CM/CMSupport/command/CMCheckOut.h"
#include "CM/CMSupport/command/CMCheckOutFromArchive.h"
#include "CM/CMSupport/command/CMRecCheckOut.h"
#include "CM/CMSupport/command/CMRecCheckOutFromArchive.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/dispatch/Sequence.h"
#include "CM/host/IDObject.h"

namespace {
constexpr bool noHybrid = false;
}

int CMFacade::CheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    const INObject::IgnoreCGModification reloadsAreNoChanges; // from before the transaction to after it
    return dispatch::run({.type = CMTxnCheckOut, .checksUnits = true, .wantsUnits = true}, units,
                         dispatch::providerRouteMissing,
                         [&] { return CMCheckOut()(units, args, diags, noHybrid); });
}

int CMFacade::RecCheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run({.type = CMTxnCheckOut, .checksUnits = true}, units, dispatch::providerRouteMissing,
                         [&] { return CMRecCheckOut()(units, args, diags, noHybrid); });
}

int CMFacade::CheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run({.type = CMTxnCheckOut}, items, dispatch::providerRouteMissing,
                         [&] { return CMCheckOutFromArchive()(items, args, diags); });
}

int CMFacade::RecCheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run({.type = CMTxnCheckOut}, items, dispatch::providerRouteMissing,
                         [&] { return CMRecCheckOutFromArchive()(items, args, diags); });
}
