// SCCFacade: runs the provider form of an operation. The entries have the parameters of the command forms, write
// no diagnostics and report to the user directly; what they return is the outcome of the provider form.
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

    /// The list holds triples: the unit, its old owner, its new owner.
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
    static int SCCHistory(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCAltHistory(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int SCCProperties(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);

    /// Prepares the provider for a project that was opened.
    static int doSetUpSCC();
    /// Ends the provider's work; only to be called while its library is loaded.
    static int doCleanUpSCC();
    /// Does nothing and returns 1.
    static int SCCRunToolExe();
};
