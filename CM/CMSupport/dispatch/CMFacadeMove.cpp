// The entries of the facade by which the archive follows the model: move, rename, delete.
#include "CM/CMSupport/command/CMDeleteMember.h"
#include "CM/CMSupport/command/CMMoveMember.h"
#include "CM/CMSupport/command/CMRenameMember.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/Paths.h"
#include "CM/CMSupport/dispatch/Providers.h"
#include "CM/CMSupport/dispatch/Sequence.h"
#include "CM/host/IProject.h"

namespace {

/// Runs the operation on the command route, with the hybrid flag if that stands in for the provider's; else on the
/// provider's. `isForCommands` tells whether hybrid mode takes the operation over.
template <std::predicate TAKES, std::invocable<bool> COMMAND> int runHybrid(TAKES isForCommands, COMMAND command) {
    if (!dispatch::isProviderRoute()) {
        return command(false);
    }
    return dispatch::isHybridMode() && isForCommands() ? command(true) : dispatch::providerRouteMissing();
}

/// The provider that handles directories as a whole.
bool isTesseraRoute() { return dispatch::isProviderRoute() && dispatch::isProviderNamed(dispatch::tessera); }

} // namespace

int CMFacade::MoveMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::within({.type = CMTxnMove}, units, [&] {
        // The owners in the list count like the units, deliberately.
        return runHybrid([&] { return dispatch::holdsDirectory(units); },
                         [&](bool hybrid) { return CMMoveMember()(units, args, diags, hybrid); });
    });
}

int CMFacade::movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath, const CString &newPath,
                                 CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) {
    return dispatch::within({.type = CMTxnMove}, units, [&] {
        // Other providers than Tessera leave this to the commands, deliberately.
        return isTesseraRoute()
                   ? dispatch::providerRouteMissing()
                   : CMMoveMember().movePackageContent(package, units, oldPath, newPath, args, diags, hybrid);
    });
}

int CMFacade::RenameMember(IUnit *unit, const CString &oldPath, const CString &newPath, CMDiagnosticList &diags) {
    return dispatch::within(CMTxnRename, [&] {
        return runHybrid([&] { return paths::hostDirectoryOf(oldPath) != paths::hostDirectoryOf(newPath); },
                         [&](bool hybrid) { return CMRenameMember()(unit, oldPath, newPath, diags, hybrid); });
    });
}

int CMFacade::DeleteMember(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    return dispatch::within({.type = CMTxnDelete, .checksUnits = true}, units, [&] {
        return runHybrid([&] { return dispatch::holdsDirectory(units); },
                         [&](bool hybrid) { return CMDeleteMember()(units, args, diags, hybrid); });
    });
}

int CMFacade::DeleteDirectory(const CString &directory, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid,
                              IDObject *object) {
    return dispatch::within(CMTxnDeleteDirectory, [&] {
        if (isTesseraRoute()) {
            return dispatch::providerRouteMissing();
        }
        if (auto *const unit = IProject::isUsingTSV() ? dynamic_cast<IUnit *>(object) : nullptr) {
            unit->tsvDelete(true);
            return 1;
        }
        return CMDeleteMember().deleteDirectory(directory, args, diags, hybrid);
    });
}
