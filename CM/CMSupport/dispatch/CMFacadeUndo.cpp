// The facade's entries that undo check outs.
#include "CM/CMSupport/command/CMRecUnCheckout.h"
#include "CM/CMSupport/command/CMUnCheckout.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/dispatch/Sequence.h"
#include "CM/CMSupport/dispatch/ValueRetriever.h"
#include "CM/host/Utilities.h"

namespace {

constexpr bool noHybrid = false;

/// The host's flags for reading the archive's files back. Made before the transaction, so that the old values
/// return after it has closed.
struct ReadingBack {
    ValueRetriever<bool> okToAll{isOk2All, false};
    ValueRetriever<bool> duplicateIds{reloadForDupId, true};
};

} // namespace

int CMFacade::Uncheckout(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    const ReadingBack flags;
    return dispatch::run(
        {.type = CMTxnUndoCheckOut, .checksUnits = true, .wantsUnits = true, .appliesSavedUnits = true}, units,
        dispatch::providerRouteMissing, [&] { return CMUnCheckout()(units, args, diags, noHybrid); });
}

int CMFacade::Uncheckout(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    const ReadingBack flags;
    // There is no such operation on the provider route: the command runs whatever the route.
    return dispatch::within({.type = CMTxnUndoCheckOut}, items,
                            [&] { return CMUnCheckout()(items, args, diags); });
}

int CMFacade::RecUncheckout(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::run(
        {.type = CMTxnUndoCheckOut, .checksUnits = true}, units, [] { return 0; },
        [&] { return CMRecUnCheckout()(units, args, diags, noHybrid); });
}
