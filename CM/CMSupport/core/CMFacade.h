// CMFacade: where a call enters the library. Operations take the caller's lists and return the outcome of the last
// unit or item that was worked on, not a summary: non-zero if it succeeded. They return 0 too if nothing was left
// to do, without a message, and if the transaction was not valid: without a tool the user has been told so,
// without an active project nothing is shown. What went wrong for which unit is told in the diagnostic list and in
// the CM output window.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMOperation.h"

#include <ostream>

class CMainFrame;
class IDObject;
class IUnit;

class ORC_CM_API CMFacade {
  public:
    CMFacade() = delete;

    using SaveCallback = void (*)();
    using ATMCallback = void (*)(CMainFrame *);

    // Set by the host at its start, read by the operations. The save callback may stay null; the two others must
    // be set before the first check out.
    static SaveCallback &saveCallbackFunc();
    static ATMCallback &ATMCallbackFunc();
    static CMainFrame *&ATMCallbackFuncParameter();
    static ATMCallback &afterATMCallbackFunc();
    static CMainFrame *&afterATMCallbackFuncParameter();
    /// The stream of the host's CM output window.
    static std::ostream *&outStream();

    // Operations. Units that may not be worked on are taken off the unit list first, except by those on an
    // archive, the list of the workspace, and the moves and renames.
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
    /// On the provider route 0, without a diagnostic.
    static int RecUncheckout(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);

    static int Fetch(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int FetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int RecFetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    /// Has a command form only beside a provider that leaves fetching to it.
    static int FetchForDiff(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int History(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);

    static int AddMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// On the command route 0, without a diagnostic.
    static int AddDirectory(CString directory, CMArgumentList &args, CMDiagnosticList &diags);

    /// Items are appended to the list. The return value says nothing about the listing.
    static int ListArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    /// Fills the list with the units that can be under configuration management; runs no command. Returns 1.
    static int ListWorkspace(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// The units serve only to choose the archive.
    static int ConnectToArchive(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// Always 0: there is no such operation.
    static int ConnectToArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);

    /// The list holds triples: the unit, its old owner, its new owner. It must not be read after a return of 0.
    static int MoveMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// Moves what lies in a package when the package's directory moves.
    static int movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath,
                                  const CString &newPath, CMArgumentList &args, CMDiagnosticList &diags,
                                  bool hybrid);
    /// Both paths are those of the unit's file. 1 also where a command failed: the output window tells it.
    static int RenameMember(IUnit *unit, const CString &oldPath, const CString &newPath, CMDiagnosticList &diags);
    static int DeleteMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// `object` is what the directory belongs to in the model; may be null.
    static int DeleteDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags,
                               bool hybrid, IDObject *object);

    /// Does nothing; an entry point for the host.
    static void DoCmDialog();
    /// Makes the list unique, keeping the first occurrence of each unit and the order, and drops null entries.
    static void removeDuplicatesFromItemList(CMUnitList &units);

  private:
    static SaveCallback _saveCallbackFunc;
    static ATMCallback _ATMCallbackFunc;
    static CMainFrame *_ATMCallbackFuncParameter;
    static ATMCallback _afterATMCallbackFunc;
    static CMainFrame *_afterATMCallbackFuncParameter;
    static std::ostream *_outStream; // reserved: outStream() gives the stream of the main CMOutputer
};

/// The index of the overlay that the host's browser draws over a unit's icon.
ORC_CM_API int getOverlayImage(const IUnit *unit);
/// Whether a dialog should offer to include the information files that go with the unit, or with any of them.
ORC_CM_API bool shouldSetInformationFilesCheckBox(IUnit *unit);
ORC_CM_API bool shouldSetInformationFilesCheckBoxForUnitsList(CMArchiveItemList &items);
ORC_CM_API bool shouldSetInformationFilesCheckBoxForUnitsList2(CMUnitList &units);
