// SCCFacade: runs the provider form of each operation. The functions take the same parameters as the command
// forms, append no diagnostics and report to the user directly. They return the result of the provider form.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

class SCCFacade {
  public:
    SCCFacade() = delete;

    static int SCCConnectToArchive(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);

    static int SCCCheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCRecCheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCCheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCRecCheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCCheckIn(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCUncheckout(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);

    static int SCCAddMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCAddDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags);

    /// The list contains triples: the unit, its old owner, its new owner.
    static int SCCMoveMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCRenameMember(IUnit *unit, const CString &oldPath, const CString &newPath,
                               CMDiagnosticList &diags);
    static int SCCDeleteMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);

    static int SCCFetch(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCFetchForDiff(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int FetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int RecFetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCFetchForDiffFromArc(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCListArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    /// Lists what belongs to the project and its units, for the dialogs. `units` is not used.
    static int SCCListArchive(CMArchiveItemList &items, CMUnitList &units);
    static int SCCHistory(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCAltHistory(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCProperties(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);

    // The start and the end of a project. All return 1. They concern the current context,
    // CMProperty::getPvContext(), and leave the list of contexts as it is.

    /// Loads the provider's library; if that was done before, closes the current context's project. Does nothing
    /// in a project that works by commands.
    static int doSetUpSCC();
    /// Ends the current context if the library has been loaded, or could not be.
    static int doCleanUpSCC();
    /// Closes the current context's project.
    static int doCloseProjectSCC();
    /// Does nothing: the provider's own program is not run.
    static int SCCRunToolExe();
};
