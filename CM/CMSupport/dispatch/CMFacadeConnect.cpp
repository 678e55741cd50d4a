// The entries of the facade that link the project to an archive.
#include "CM/CMSupport/command/CMConnectToCMRepository.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/dispatch/Sequence.h"

int CMFacade::ConnectToArchive(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run({.type = CMTxnConnect}, units, dispatch::providerRouteMissing,
                         [&] { return CMConnectToCMRepository()(units, args, diags); });
}

int CMFacade::ConnectToArchive(CMArchiveItemList &items, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/) {
    // The transaction opens and closes all the same: its separators are seen.
    return dispatch::within({.type = CMTxnConnect}, items, [] { return 0; });
}
