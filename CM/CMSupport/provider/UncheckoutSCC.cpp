#include "CM/CMSupport/provider/UncheckoutSCC.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/ModelUpdate.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/ReloadingBatch.h"
#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/CMSupport/resources/Format.h"

using resources::Text;

namespace {

class Run {
  public:
    explicit Run(CMUnitList &units) : units_(units), batch_(units) {}

    void workThrough() {
        batch_.open();
        pvContextStruct *const record = run_.openSharedContext("perform undo check out", provider::headOf(units_));
        if (record == nullptr) {
            return; // required: without the callback after reloads
        }
        context_ = record->getpvContextPtr();
        batch_.start();
        while (IUnit *const unit = batch_.next()) {
            OutcomeReport report(*unit);
            if (!report.mayBegin()) {
                continue;
            }
            const bool goesOn = undo(*unit, report);
            report.send();
            if (!goesOn) {
                return;
            }
        }
        batch_.close();
    }

  private:
    /// Returns false if the operation ends.
    bool undo(IUnit &unit, OutcomeReport &report) {
        const CString path = paths::join(unit.getOwnDirectory(), unit.getFileName());
        const provider::FileState state = run_.stateOf(path, context_);
        if (provider::isOpenProjectPropertyTrue(keys::ignoreUndoOfOthers) && state.result == SCC_OK &&
            !state.has(SCC_STATUS_CHECKEDOUT)) {
            CMOutputer::writeToCMOutputWnd(resources::format(Text::fileNotCheckedOut, {path}));
            report.fail(CMOutcome::Kind::nothingToDo, Text::resultNotCheckedOut);
            return false;
        }
        SCCdll &library = CMProperty::getSCCdll();
        const CStringList files{unit.getFullFileName()}; // required: other than the query
        const long result = run_.call(library.SccUncheckout, context_, files, 0L);
        provider::reportCall(report, library.SccUncheckout, result);
        if (result != SCC_OK) {
            SCCTextOutProc::InternalTextOutProc(result, 0);
            return true;
        }
        if (IUnit *const undone = provider::isEmbeddedFile(unit) ? &unit : reload(unit, path, report)) {
            run_.updateMode(*undone);
            run_.updateStatus(*undone, context_);
        }
        return true;
    }

    IUnit *reload(IUnit &unit, const CString &path, OutcomeReport &report) {
        run_.log().write("Performing ATM for the file " + unit.getFullFileName());
        IUnit *const reloaded = run_.reload(unit, core::reloadUnitAndRenameFile, path, batch_, report);
        if (reloaded != nullptr) {
            run_.updateHeader(*reloaded);
        }
        return reloaded;
    }

    CMUnitList &units_;
    core::ReloadingBatch batch_;
    provider::ProviderRun run_{"../CM/CMSupport/UncheckoutSCC"};
    void *context_ = nullptr;
};

} // namespace

int UncheckoutSCC::operator()(CMUnitList &units, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/,
                              bool /*hybrid*/) {
    core::saveModel();
    Run(units).workThrough();
    return 0;
}

void UncheckoutSCC::renameFileIfNeeded(IUnit *unit, const CString &oldFileName, CString &oldName) {
    core::renameFileIfNeeded(unit, oldName, oldFileName);
}
