// The facade's entries that add to the archive.
#include "CM/CMSupport/command/CMAddMember.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/dispatch/Sequence.h"

int CMFacade::AddMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    constexpr bool noHybrid = false;
    return dispatch::run({.type = CMTxnAdd, .checksUnits = true}, units, dispatch::providerRouteMissing,
                         [&] { return CMAddMember()(units, args, diags, noHybrid); });
}

// The interface takes the directory by value.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
int CMFacade::AddDirectory(CString /*directory*/, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/) {
    CMUnitList none;
    return dispatch::run({.type = CMTxnAddDirectory}, none, dispatch::providerRouteMissing,
                         [] { return 0; }); // there is no such command
}
