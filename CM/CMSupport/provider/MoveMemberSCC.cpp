#include "CM/CMSupport/provider/MoveMemberSCC.h"

#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/provider/ProviderRename.h"
#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"

namespace {

constexpr auto source = "../CM/CMSupport/MoveMemberSCC";

/// Moves one unit from a directory to another. Returns false if the operation ends.
bool move(provider::ProviderRun &run, IUnit &unit, const CString &fromDirectory, const CString &toDirectory,
          const CString &name, OutcomeReport &report) {
    pvContextStruct *const record = provider::contextFor(&unit, report);
    if (record == nullptr) {
        return false;
    }
    const CString from = paths::join(fromDirectory, name);
    run.log().before("SccRename", from);
    const long result =
        provider::callRename(run, record->getpvContextPtr(), from, paths::join(toDirectory, name), report);
    if (result != SCC_OK) {
        SCCTextOutProc::InternalTextOutProc(result, 1);
    }
    return result == SCC_OK;
}

/// Returns whether there is anything to move; if not, reports that.
bool isToBeMoved(const IUnit &unit, const CString &from, const CString &to, OutcomeReport &report) {
    if ((unit.isSaveUnit() || provider::isEmbeddedFile(unit)) && from != to) {
        return true;
    }
    report.sendAs(CMOutcome::Kind::nothingToDo);
    return false;
}

} // namespace

int MoveMemberSCC::operator()(CMUnitList &units, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/,
                              bool /*hybrid*/) {
    if (units.IsEmpty()) {
        return 0;
    }
    provider::ProviderRun run(source);
    auto position = units.GetHeadPosition();
    const auto next = [&]() -> IUnit * { return position ? units.GetNext(position) : nullptr; };
    while (position) {
        IUnit *const unit = next();
        const IUnit *const oldOwner = next();
        const IUnit *const newOwner = next();
        if (unit == nullptr || oldOwner == nullptr || newOwner == nullptr) {
            continue;
        }
        OutcomeReport report(*unit);
        const CString from = oldOwner->getPartsDirectory();
        const CString to = newOwner->getPartsDirectory();
        if (!report.mayBegin() || !isToBeMoved(*unit, from, to, report)) {
            continue;
        }
        run.log().write("Getting SCC Context to perform move");
        const bool goesOn = move(run, *unit, from, to, provider::archivedName(*unit), report);
        report.send();
        if (!goesOn) {
            return 0; // what has moved stays moved
        }
    }
    return 1;
}

int MoveMemberSCC::movePackageContent(IUnit *package, CMUnitList &units, const CString &oldPath,
                                      const CString &newPath, CMArgumentList & /*args*/, CMDiagnosticList &diags,
                                      bool hybrid) {
    CString error;
    if (isCMTool(error, nullptr, hybrid) == 0) {
        CMDiagnostic diagnostic(0, error, static_cast<const IUnit *>(nullptr));
        diags.AddTail(diagnostic);
        OutcomeReport report;
        report.fail(CMOutcome::Kind::noTool, error);
        report.send();
        return 0;
    }
    provider::ProviderRun run(source);
    for (IUnit *const unit : units) {
        if (unit == nullptr) {
            continue;
        }
        OutcomeReport report(*unit);
        if (!report.mayBegin() || !isToBeMoved(*unit, oldPath, newPath, report)) {
            continue;
        }
        const CString name = unit == package ? unit->getFileName() : provider::archivedName(*unit);
        const bool goesOn = move(run, *unit, oldPath, newPath, name, report);
        report.send();
        if (!goesOn) {
            return 0;
        }
    }
    return 1;
}
