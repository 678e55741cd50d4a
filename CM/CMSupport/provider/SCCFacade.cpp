#include "CM/CMSupport/provider/SCCFacade.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/provider/AddMemberSCC.h"
#include "CM/CMSupport/provider/CheckInSCC.h"
#include "CM/CMSupport/provider/CheckOutFromArchiveSCC.h"
#include "CM/CMSupport/provider/CheckOutSCC.h"
#include "CM/CMSupport/provider/DeleteMemberSCC.h"
#include "CM/CMSupport/provider/FetchSCC.h"
#include "CM/CMSupport/provider/HistorySCC.h"
#include "CM/CMSupport/provider/ListArchiveSCC.h"
#include "CM/CMSupport/provider/MoveMemberSCC.h"
#include "CM/CMSupport/provider/PropertiesSCC.h"
#include "CM/CMSupport/provider/ProviderLibrary.h"
#include "CM/CMSupport/provider/RecCheckOutFromArchiveSCC.h"
#include "CM/CMSupport/provider/RecCheckOutSCC.h"
#include "CM/CMSupport/provider/RenameMemberSCC.h"
#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/provider/SCCdll.h"
#include "CM/CMSupport/provider/UncheckoutSCC.h"

int SCCFacade::SCCConnectToArchive(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return SCCConnectToCMRepository()(units, args, diags);
}

int SCCFacade::SCCCheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return CheckOutSCC()(units, args, diags, false);
}
int SCCFacade::SCCRecCheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return RecCheckOutSCC()(units, args, diags, false);
}
int SCCFacade::SCCCheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return CheckOutFromArchiveSCC()(items, args, diags);
}
int SCCFacade::SCCRecCheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return RecCheckOutFromArchiveSCC()(items, args, diags);
}
int SCCFacade::SCCCheckIn(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return CheckInSCC()(units, args, diags, false);
}
int SCCFacade::SCCUncheckout(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return UncheckoutSCC()(units, args, diags, false);
}

int SCCFacade::SCCAddMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return AddMemberSCC()(units, args, diags, false);
}
int SCCFacade::SCCAddDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags) {
    return AddMemberSCC().AddDirectory(directory, args, diags);
}

int SCCFacade::SCCMoveMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return MoveMemberSCC()(units, args, diags, false);
}
int SCCFacade::SCCRenameMember(IUnit *unit, const CString &oldPath, const CString &newPath,
                               CMDiagnosticList &diags) {
    return RenameMemberSCC()(unit, oldPath, newPath, diags, false);
}
int SCCFacade::SCCDeleteMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return DeleteMemberSCC()(units, args, diags, false);
}

int SCCFacade::SCCFetch(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return FetchSCC()(units, args, diags, false);
}
int SCCFacade::SCCFetchForDiff(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return FetchSCC().FetchForDiff(units, args, diags);
}
int SCCFacade::FetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return FetchSCC().FetchFromArchive(items, args, diags);
}
int SCCFacade::RecFetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return FetchSCC().RecFetchFromArchive(items, args, diags);
}
int SCCFacade::SCCFetchForDiffFromArc(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return FetchSCC().FetchForDiffFromArc(items, args, diags);
}
int SCCFacade::SCCListArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return ListArchiveSCC()(items, args, diags);
}
int SCCFacade::SCCListArchive(CMArchiveItemList &items, CMUnitList &units) {
    return ListArchiveSCC()(items, units);
}
int SCCFacade::SCCHistory(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return HistorySCC()(units, args, diags);
}
int SCCFacade::SCCAltHistory(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    return HistorySCC().Alt(items, args, diags);
}
int SCCFacade::SCCProperties(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return PropertiesSCC()(units, args, diags);
}

int SCCFacade::doSetUpSCC() {
    if (CMProperty::useSccCompliantTool() == 0) {
        return 1;
    }
    if (CMProperty::getIsLoaded() != 0) {
        return doCloseProjectSCC();
    }
    provider::loadLibrary();
    return 1;
}

int SCCFacade::doCleanUpSCC() {
    if (CMProperty::getIsLoaded() != 0) {
        CMProperty::getSCCdll().SccUninitialize(CMProperty::getPvContext());
    }
    return 1;
}

int SCCFacade::doCloseProjectSCC() {
    CMProperty::getSCCdll().SccCloseProject(CMProperty::getPvContext());
    return 1;
}

int SCCFacade::SCCRunToolExe() { return 1; }
