// Offers the operations of the library to hosts and dialogs. An operation takes the caller's lists. Its result is
// about the last unit or item only: non-zero if its command was run, even if the tool failed. Most operations also
// return 0, without a message, if there is nothing to do. Run by command, MoveMember, movePackageContent,
// RenameMember and RecUncheckout return 1 in that case. They also return 0 if no operation may run: if the tool is
// "None" (with a message) or if no project is active (without one). Only ListWorkspace and doConnectToArcDlg run
// in any case. If no tool is configured, a diagnostic says so. The outcome observer receives the outcome of each
// unit.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/core/CMOutcome.h"

#include <ostream>

class CMainFrame;
class IDObject;
class IUnit;

class ORC_CM_API CMFacade {
  public:
    CMFacade() = delete;

    using SaveCallback = void (*)();
    using ATMCallback = void (*)(CMainFrame *);

    // Set by the host at its start, read by the operations. The save callback may stay null. The two callbacks
    // around reloads must be set before the first check out or undo of a check out.
    static SaveCallback &saveCallbackFunc();
    static ATMCallback &ATMCallbackFunc();
    static CMainFrame *&ATMCallbackFuncParameter();
    static ATMCallback &afterATMCallbackFunc();
    static CMainFrame *&afterATMCallbackFuncParameter();
    /// The stream of the host's CM output window.
    static std::ostream *&outStream();
    /// The observer that receives the outcome of each unit and item; null, the initial value, for none. The host
    /// owns it.
    static CMOutcomeObserver *&outcomeObserver();

    // Operations. Units that may not be worked on are removed from the unit list first, except by ListWorkspace,
    // ConnectToArchive, MoveMember and movePackageContent.
    static int CheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int RecCheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int CheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int RecCheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);

    static int CheckIn(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int RecCheckIn(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int LockItem(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int UnLockItem(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);

    static int Uncheckout(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int Uncheckout(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    /// Returns 0 on the provider route, without a diagnostic.
    static int RecUncheckout(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);

    static int Fetch(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int FetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int RecFetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    /// Runs the command in hybrid mode; otherwise always takes the provider route, even with a command tool.
    static int FetchForDiff(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int History(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    // These three have only a provider form, which also runs in a project that works by commands.
    static int FetchForDiffFromArc(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int HistoryArcView(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int Properties(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);

    static int AddMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// Returns 0 on the command route, without a diagnostic.
    static int AddDirectory(CString directory, CMArgumentList &args, CMDiagnosticList &diags);

    /// Appends items to the list. The return value says nothing about the listing.
    static int ListArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    /// Fills the list with the units that can be under configuration management; runs no command. Returns 1.
    static int ListWorkspace(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// Uses the units only to choose the archive.
    static int ConnectToArchive(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// Always returns 0: there is no such operation.
    static int ConnectToArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);

    /// Takes triples: unit, old owner, new owner. Run by command, stops at the first unit without a template and
    /// returns 0. Doesn't change the list of units.
    static int MoveMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// Moves the units of a package when the package's directory moves. Returns as MoveMember does.
    static int movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath,
                                  const CString &newPath, CMArgumentList &args, CMDiagnosticList &diags,
                                  bool hybrid);
    /// Takes the paths of the unit's file. Run by command, returns 1 even if a command failed; neither the return
    /// value nor the diagnostics show this.
    static int RenameMember(IUnit *unit, const CString &oldPath, const CString &newPath, CMDiagnosticList &diags);
    static int DeleteMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// `object` is the model element that the directory belongs to; may be null.
    static int DeleteDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags,
                               bool hybrid, IDObject *object);

    /// Shows the dialog in which the user connects the project to an archive, even without a project or a tool,
    /// and returns 1. Unless the program has assigned such a dialog (dispatch::connectToArchiveDialog), only the
    /// separators appear in the output window.
    static int doConnectToArcDlg();

    // The host calls doSetUpSCC when a project opens and doCloseProjectSCC when it closes; it may call
    // doCleanUpSCC at any time.

    /// Prepares the provider of the project. Returns 1 for a project that works by commands, else the result of
    /// the provider route.
    static int doSetUpSCC();
    /// Both end the provider's current context if the provider's library was to be loaded, and return 1.
    static int doCloseProjectSCC();
    static int doCleanUpSCC();
    /// Returns 1; an entry point for the host.
    static int RunToolExe();
    /// Does nothing; an entry point for the host.
    static void DoCmDialog();
    /// Removes null entries and all but the first occurrence of each unit. Keeps the order.
    static void removeDuplicatesFromItemList(CMUnitList &units);

  private:
    static SaveCallback _saveCallbackFunc;
    static ATMCallback _ATMCallbackFunc;
    static CMainFrame *_ATMCallbackFuncParameter;
    static ATMCallback _afterATMCallbackFunc;
    static CMainFrame *_afterATMCallbackFuncParameter;
    static CMOutcomeObserver *outcomeObserver_;
    static std::ostream *_outStream; // reserved: outStream() returns the stream of the main CMOutputer
};

/// Returns the index of the overlay that the host's browser draws over a unit's icon.
ORC_CM_API int getOverlayImage(const IUnit *unit);
/// Return whether a dialog should offer to include the information files that belong to the unit, or to any entry
/// of the list.
ORC_CM_API bool shouldSetInformationFilesCheckBox(IUnit *unit);
ORC_CM_API bool shouldSetInformationFilesCheckBoxForUnitsList(CMArchiveItemList &items);
ORC_CM_API bool shouldSetInformationFilesCheckBoxForUnitsList2(CMUnitList &units);
