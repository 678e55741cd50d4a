// The facade's entries that list the archive and the workspace.
#include "CM/CMSupport/command/CMListArchive.h"
#include "CM/CMSupport/command/CMListWorkspace.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/dispatch/Sequence.h"

int CMFacade::ListArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run({.type = CMTxnListArchive}, items, dispatch::providerRouteMissing,
                         [&] { return CMListArchive()(items, args, diags); });
}

int CMFacade::ListWorkspace(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    constexpr bool noHybrid = false;
    return CMListWorkspace()(units, args, diags, noHybrid);
}
