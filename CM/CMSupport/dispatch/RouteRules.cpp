#include "CM/CMSupport/dispatch/RouteRules.h"

#include "CM/CMSupport/command/CMDeleteMember.h"
#include "CM/CMSupport/command/CMFetch.h"
#include "CM/CMSupport/command/CMMoveMember.h"
#include "CM/CMSupport/command/CMRenameMember.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/UnitFiles.h"
#include "CM/CMSupport/provider/DeleteMemberSCC.h"
#include "CM/CMSupport/provider/MoveMemberSCC.h"
#include "CM/CMSupport/provider/SCCFacade.h"
#include "CM/host/IProject.h"

#include <algorithm>
#include <string_view>

namespace dispatch {

namespace {

bool isProviderRoute() { return CMProperty::useSccCompliantTool() != 0; }

/// Ignores case.
bool isProviderNamed(std::string_view name) {
    CString provider;
    CMProperty::getSCCToolName(provider);
    return provider.CompareNoCase(name) == 0;
}

/// Returns whether the project allows hybrid mode and the provider supports it.
bool isHybridMode() { return CMProperty::isHybridModePossible() && isProviderNamed("Basalt"); }

/// Returns whether the provider handles directories as a whole.
bool isTesseraRoute() { return isProviderRoute() && isProviderNamed("Tessera"); }

bool holdsDirectory(const CMUnitList &units) { return std::any_of(units.begin(), units.end(), hasOwnDirectory); }

} // namespace

int fetchForDiff(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return isHybridMode() ? CMFetch()(units, args, diags, true) : SCCFacade::SCCFetchForDiff(units, args, diags);
}

int moveMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    if (!isProviderRoute()) {
        return CMMoveMember()(units, args, diags, false);
    }
    return isHybridMode() && holdsDirectory(units) ? CMMoveMember()(units, args, diags, true)
                                                   : SCCFacade::SCCMoveMember(units, args, diags);
}

int deleteMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    if (!isProviderRoute()) {
        return CMDeleteMember()(units, args, diags, false);
    }
    return isHybridMode() && holdsDirectory(units) ? CMDeleteMember()(units, args, diags, true)
                                                   : SCCFacade::SCCDeleteMember(units, args, diags);
}

int renameMember(IUnit *unit, const CString &oldPath, const CString &newPath, CMDiagnosticList &diags) {
    if (!isProviderRoute()) {
        return CMRenameMember()(unit, oldPath, newPath, diags, false);
    }
    return isHybridMode() && paths::hostDirectoryOf(oldPath) != paths::hostDirectoryOf(newPath)
               ? CMRenameMember()(unit, oldPath, newPath, diags, true)
               : SCCFacade::SCCRenameMember(unit, oldPath, newPath, diags);
}

int movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath, const CString &newPath,
                       CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) {
    return isTesseraRoute()
               ? MoveMemberSCC().movePackageContent(package, units, oldPath, newPath, args, diags, hybrid)
               : CMMoveMember().movePackageContent(package, units, oldPath, newPath, args, diags, hybrid);
}

int deleteDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid,
                    IDObject *object) {
    if (isTesseraRoute()) {
        return DeleteMemberSCC().DeleteDirectory(directory, args, diags);
    }
    if (auto *const unit = IProject::isUsingTSV() ? dynamic_cast<IUnit *>(object) : nullptr) {
        unit->tsvDelete(true);
        return 1;
    }
    return CMDeleteMember().deleteDirectory(directory, args, diags, hybrid);
}

} // namespace dispatch
