// Implements the operations of CMFacade: a table with what is special to each, and the entries.
#include "CM/CMSupport/command/CMAddMember.h"
#include "CM/CMSupport/command/CMCheckIn.h"
#include "CM/CMSupport/command/CMCheckOut.h"
#include "CM/CMSupport/command/CMCheckOutFromArchive.h"
#include "CM/CMSupport/command/CMConnectToCMRepository.h"
#include "CM/CMSupport/command/CMFetch.h"
#include "CM/CMSupport/command/CMFetchFromArchive.h"
#include "CM/CMSupport/command/CMHistory.h"
#include "CM/CMSupport/command/CMListArchive.h"
#include "CM/CMSupport/command/CMListWorkspace.h"
#include "CM/CMSupport/command/CMLockItem.h"
#include "CM/CMSupport/command/CMRecCheckIn.h"
#include "CM/CMSupport/command/CMRecCheckOut.h"
#include "CM/CMSupport/command/CMRecCheckOutFromArchive.h"
#include "CM/CMSupport/command/CMRecFetchFromArchive.h"
#include "CM/CMSupport/command/CMRecUnCheckout.h"
#include "CM/CMSupport/command/CMUnCheckout.h"
#include "CM/CMSupport/command/CMUnLockItem.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/dispatch/RouteRules.h"
#include "CM/CMSupport/dispatch/Row.h"
#include "CM/CMSupport/dispatch/ValueRetriever.h"
#include "CM/CMSupport/provider/SCCFacade.h"
#include "CM/host/IDObject.h"
#include "CM/host/Utilities.h"

#include <concepts>

namespace {

using UnitRow = dispatch::Row<CMUnitList &, CMArgumentList &, CMDiagnosticList &>;
using ItemRow = dispatch::Row<CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &>;

/// Runs the command form: creates the operation and calls it, with `hybrid` false if it has that parameter.
template <class OPERATION, class LIST> int command(LIST &list, CMArgumentList &args, CMDiagnosticList &diags) {
    if constexpr (std::invocable<OPERATION, LIST &, CMArgumentList &, CMDiagnosticList &, bool>) {
        return OPERATION()(list, args, diags, false);
    } else {
        return OPERATION()(list, args, diags);
    }
}

/// Does nothing: the form for a route that lacks the operation.
template <class... ARGS> int nothing(ARGS... /*args*/) { return 0; }

constexpr bool yes = true;
constexpr bool no = false;
constexpr bool applySaved = true;
constexpr std::nullptr_t none = nullptr; // the other form runs on both routes

// Required: RecCheckIn has the plain form on the provider route. Providers have no locks and no undo of archive
// items, so these rows run their command on both routes:
// CheckInEntries.OnTheProviderRouteLocksByCommandAllTheSameAndChecksNothingIn,
// UndoEntries.OnTheProviderRouteTheItemFormRunsItsCommandAllTheSame.
// clang-format off
//                                        transaction            check count  provider form                         command form                       after
constexpr UnitRow checkIn                {CMTxnCheckIn,          yes, yes, SCCFacade::SCCCheckIn,                command<CMCheckIn>};
constexpr UnitRow recCheckIn             {CMTxnCheckIn,          yes, no,  SCCFacade::SCCCheckIn,                command<CMRecCheckIn>};
constexpr UnitRow checkOut               {CMTxnCheckOut,         yes, yes, SCCFacade::SCCCheckOut,               command<CMCheckOut>};
constexpr UnitRow recCheckOut            {CMTxnCheckOut,         yes, no,  SCCFacade::SCCRecCheckOut,            command<CMRecCheckOut>};
constexpr ItemRow checkOutFromArchive    {CMTxnCheckOut,         no,  no,  SCCFacade::SCCCheckOutFromArchive,    command<CMCheckOutFromArchive>};
constexpr ItemRow recCheckOutFromArchive {CMTxnCheckOut,         no,  no,  SCCFacade::SCCRecCheckOutFromArchive, command<CMRecCheckOutFromArchive>};
constexpr UnitRow lockItem               {CMTxnLock,             yes, no,  none,                                 command<CMLockItem>};
constexpr UnitRow unLockItem             {CMTxnUnlock,           yes, no,  none,                                 command<CMUnLockItem>};
constexpr UnitRow fetch                  {CMTxnFetch,            yes, no,  SCCFacade::SCCFetch,                  command<CMFetch>,                 applySaved};
constexpr ItemRow fetchFromArchive       {CMTxnFetch,            no,  no,  SCCFacade::FetchFromArchive,          command<CMFetchFromArchive>};
constexpr ItemRow recFetchFromArchive    {CMTxnFetch,            no,  no,  SCCFacade::RecFetchFromArchive,       command<CMRecFetchFromArchive>};
constexpr UnitRow fetchForDiff           {CMTxnFetch,            yes, no,  none,                                 dispatch::fetchForDiff};
constexpr ItemRow fetchForDiffFromArc    {CMTxnFetch,            no,  no,  SCCFacade::SCCFetchForDiffFromArc,    none};
constexpr UnitRow history                {CMTxnHistory,          yes, yes, SCCFacade::SCCHistory,                command<CMHistory>};
constexpr ItemRow historyArcView         {CMTxnHistory,          no,  no,  SCCFacade::SCCAltHistory,             none};
constexpr UnitRow properties             {CMTxnProperties,       yes, no,  SCCFacade::SCCProperties,             none};
constexpr UnitRow uncheckout             {CMTxnUndoCheckOut,     yes, yes, SCCFacade::SCCUncheckout,             command<CMUnCheckout>,            applySaved};
constexpr ItemRow uncheckoutItems        {CMTxnUndoCheckOut,     no,  no,  none,                                 command<CMUnCheckout>};
constexpr UnitRow recUncheckout          {CMTxnUndoCheckOut,     yes, no,  nothing,                              command<CMRecUnCheckout>};
constexpr UnitRow addMember              {CMTxnAdd,              yes, no,  SCCFacade::SCCAddMember,              command<CMAddMember>};
constexpr UnitRow moveMember             {CMTxnMove,             no,  no,  none,                                 dispatch::moveMember};
constexpr UnitRow deleteMember           {CMTxnDelete,           yes, no,  none,                                 dispatch::deleteMember};
constexpr ItemRow listArchive            {CMTxnListArchive,      no,  no,  SCCFacade::SCCListArchive,            command<CMListArchive>};
constexpr UnitRow connectToArchive       {CMTxnConnect,          no,  no,  SCCFacade::SCCConnectToArchive,       command<CMConnectToCMRepository>};
constexpr ItemRow connectItems           {CMTxnConnect,          no,  no,  none,                                 nothing}; // shows only the separators

constexpr dispatch::Row<const CString &, CMArgumentList &, CMDiagnosticList &>
                  addDirectory           {CMTxnAddDirectory,     no,  no,  SCCFacade::SCCAddDirectory,           nothing};
constexpr dispatch::Row<IUnit *, CMUnitList &, const CString &, const CString &, CMArgumentList &, CMDiagnosticList &, bool>
                  movePackage            {CMTxnMove,             no,  no,  none,                                 dispatch::movePackageContent};
constexpr dispatch::Row<IUnit *, const CString &, const CString &, CMDiagnosticList &>
                  renameMember           {CMTxnRename,           no,  no,  none,                                 dispatch::renameMember};
constexpr dispatch::Row<const CString &, CMArgumentList &, CMDiagnosticList &, bool, IDObject *>
                  deleteDirectory        {CMTxnDeleteDirectory,  no,  no,  none,                                 dispatch::deleteDirectory};
// clang-format on

/// Sets the host's flags for reloading archived files. Must be created before the transaction, so that it restores
/// the flags after the transaction has ended.
struct ReadingBack {
    ValueRetriever<bool> okToAll{isOk2All, false};
    ValueRetriever<bool> duplicateIds{reloadForDupId, true};
};

} // namespace

int CMFacade::CheckIn(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return checkIn.run(units, args, diags);
}

int CMFacade::RecCheckIn(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return recCheckIn.run(units, args, diags);
}

int CMFacade::CheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    const INObject::IgnoreCGModification reloadsAreNoChanges; // from before the transaction to after it
    return checkOut.run(units, args, diags);
}

int CMFacade::RecCheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return recCheckOut.run(units, args, diags);
}

int CMFacade::CheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return checkOutFromArchive.run(items, args, diags);
}

int CMFacade::RecCheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return recCheckOutFromArchive.run(items, args, diags);
}

int CMFacade::LockItem(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return lockItem.run(units, args, diags);
}

int CMFacade::UnLockItem(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return unLockItem.run(units, args, diags);
}

int CMFacade::Fetch(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return fetch.run(units, args, diags);
}

int CMFacade::FetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return fetchFromArchive.run(items, args, diags);
}

int CMFacade::RecFetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return recFetchFromArchive.run(items, args, diags);
}

int CMFacade::FetchForDiff(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return fetchForDiff.run(units, args, diags);
}

int CMFacade::FetchForDiffFromArc(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return fetchForDiffFromArc.run(items, args, diags);
}

int CMFacade::History(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return history.run(units, args, diags);
}

int CMFacade::HistoryArcView(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return historyArcView.run(items, args, diags);
}

int CMFacade::Properties(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return properties.run(units, args, diags);
}

int CMFacade::Uncheckout(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    const ReadingBack flags;
    return uncheckout.run(units, args, diags);
}

int CMFacade::Uncheckout(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    const ReadingBack flags;
    return uncheckoutItems.run(items, args, diags);
}

int CMFacade::RecUncheckout(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return recUncheckout.run(units, args, diags);
}

int CMFacade::AddMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return addMember.run(units, args, diags);
}

// The interface takes the directory by value.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
int CMFacade::AddDirectory(CString directory, CMArgumentList &args, CMDiagnosticList &diags) {
    return addDirectory.run(directory, args, diags);
}

int CMFacade::MoveMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return moveMember.run(units, args, diags);
}

int CMFacade::movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath, const CString &newPath,
                                 CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) {
    return movePackage.run(package, units, oldPath, newPath, args, diags, hybrid);
}

int CMFacade::RenameMember(IUnit *unit, const CString &oldPath, const CString &newPath, CMDiagnosticList &diags) {
    return renameMember.run(unit, oldPath, newPath, diags);
}

int CMFacade::DeleteMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return deleteMember.run(units, args, diags);
}

int CMFacade::DeleteDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid,
                              IDObject *object) {
    return deleteDirectory.run(directory, args, diags, hybrid, object);
}

int CMFacade::ListArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return listArchive.run(items, args, diags);
}

int CMFacade::ConnectToArchive(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return connectToArchive.run(units, args, diags);
}

int CMFacade::ConnectToArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return connectItems.run(items, args, diags);
}

// Not in the table: it opens no transaction and has no route.
int CMFacade::ListWorkspace(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return command<CMListWorkspace>(units, args, diags);
}
