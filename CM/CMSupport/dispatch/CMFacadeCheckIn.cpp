// The facade's entries that check in, lock and unlock.
#include "CM/CMSupport/command/CMCheckIn.h"
#include "CM/CMSupport/command/CMLockItem.h"
#include "CM/CMSupport/command/CMRecCheckIn.h"
#include "CM/CMSupport/command/CMUnLockItem.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/dispatch/Sequence.h"

namespace {
constexpr bool noHybrid = false;
}

int CMFacade::CheckIn(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run({.type = CMTxnCheckIn, .checksUnits = true, .wantsUnits = true}, units,
                         dispatch::providerRouteMissing,
                         [&] { return CMCheckIn()(units, args, diags, noHybrid); });
}

int CMFacade::RecCheckIn(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run({.type = CMTxnCheckIn, .checksUnits = true}, units, dispatch::providerRouteMissing,
                         [&] { return CMRecCheckIn()(units, args, diags, noHybrid); });
}

// Locking has no form of its own on the provider route: these two run their command whatever the route.

int CMFacade::LockItem(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::within({.type = CMTxnLock, .checksUnits = true}, units,
                            [&] { return CMLockItem()(units, args, diags, noHybrid); });
}

int CMFacade::UnLockItem(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::within({.type = CMTxnUnlock, .checksUnits = true}, units,
                            [&] { return CMUnLockItem()(units, args, diags, noHybrid); });
}
