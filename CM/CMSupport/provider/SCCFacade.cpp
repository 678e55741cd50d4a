#include "CM/CMSupport/provider/SCCFacade.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/provider/ProviderLibrary.h"
#include "CM/CMSupport/provider/RouteMissing.h"
#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/provider/SCCdll.h"

using provider::routeMissing;

int SCCFacade::SCCConnectToArchive(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return SCCConnectToCMRepository()(units, args, diags);
}

int SCCFacade::SCCCheckOut(CMUnitList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }
int SCCFacade::SCCRecCheckOut(CMUnitList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }
int SCCFacade::SCCCheckOutFromArchive(CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &) {
    return routeMissing();
}
int SCCFacade::SCCRecCheckOutFromArchive(CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &) {
    return routeMissing();
}
int SCCFacade::SCCCheckIn(CMUnitList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }
int SCCFacade::SCCUncheckout(CMUnitList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }

int SCCFacade::SCCAddMember(CMUnitList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }
int SCCFacade::SCCAddDirectory(const CString &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }

int SCCFacade::SCCMoveMember(CMUnitList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }
int SCCFacade::SCCRenameMember(IUnit *, const CString &, const CString &, CMDiagnosticList &) {
    return routeMissing();
}
int SCCFacade::SCCDeleteMember(CMUnitList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }

int SCCFacade::SCCFetch(CMUnitList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }
int SCCFacade::SCCFetchForDiff(CMUnitList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }
int SCCFacade::FetchFromArchive(CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &) {
    return routeMissing();
}
int SCCFacade::RecFetchFromArchive(CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &) {
    return routeMissing();
}
int SCCFacade::SCCFetchForDiffFromArc(CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &) {
    return routeMissing();
}
int SCCFacade::SCCListArchive(CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }
int SCCFacade::SCCHistory(CMUnitList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }
int SCCFacade::SCCAltHistory(CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }
int SCCFacade::SCCProperties(CMUnitList &, CMArgumentList &, CMDiagnosticList &) { return routeMissing(); }

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
