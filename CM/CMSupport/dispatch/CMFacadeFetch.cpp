// The entries of the facade that read from the archive: fetch and history.
#include "CM/CMSupport/command/CMFetch.h"
#include "CM/CMSupport/command/CMFetchFromArchive.h"
#include "CM/CMSupport/command/CMHistory.h"
#include "CM/CMSupport/command/CMRecFetchFromArchive.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/dispatch/Providers.h"
#include "CM/CMSupport/dispatch/Sequence.h"

int CMFacade::Fetch(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run({.type = CMTxnFetch, .checksUnits = true, .appliesSavedUnits = true}, units,
                         dispatch::providerRouteMissing, [&] { return CMFetch()(units, args, diags, false); });
}

int CMFacade::FetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run({.type = CMTxnFetch}, items, dispatch::providerRouteMissing,
                         [&] { return CMFetchFromArchive()(items, args, diags); });
}

int CMFacade::RecFetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run({.type = CMTxnFetch}, items, dispatch::providerRouteMissing,
                         [&] { return CMRecFetchFromArchive()(items, args, diags); });
}

int CMFacade::FetchForDiff(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::within({.type = CMTxnFetch, .checksUnits = true}, units, [&] {
        // The route isn't asked for, deliberately: with a plain command tool this goes to the provider too.
        return dispatch::isHybridMode() ? CMFetch()(units, args, diags, true) : dispatch::providerRouteMissing();
    });
}

int CMFacade::History(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run({.type = CMTxnHistory, .checksUnits = true, .wantsUnits = true}, units,
                         dispatch::providerRouteMissing, [&] { return CMHistory()(units, args, diags, false); });
}
