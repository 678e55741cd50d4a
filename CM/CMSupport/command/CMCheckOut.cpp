#include "CM/CMSupport/command/CMCheckOut.h"

#include "CM/CMSupport/command/ArchiveSelection.h"
#include "CM/CMSupport/command/CheckOutRun.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/core/ModelUpdate.h"
#include "CM/CMSupport/core/ReloadingBatch.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "CM/host/Reload.h"

#include <optional>

namespace {

class Run : public command::CheckOutRun<IUnit> {
  public:
    Run(CMUnitList &units, CMArgumentList &args, CString &error)
        : CheckOutRun({.property = IPN::CMCheckOut,
                       .source = "../CM/CMSupport/CheckOut",
                       .beforeRun = "Executing the following command to check out the file: ",
                       // Required: "Check in". Test: CheckOut.LogsTheToolsOutput.
                       .afterRun = "Check in command returned the following: ",
                       .guard = CMORYHandler::ORYCheckOut},
                      args, error),
          batch_(units) {}

    /// Works on the units from first to last. Reloaded units replace the old ones in the list.
    void workThrough() {
        batch_.open();
        readQuestion();
        batch_.start();
        while (IUnit *const unit = batch_.next()) {
            work(unit);
        }
        batch_.close();
    }

  protected:
    void prepare(IUnit &unit) override { command::selectArchive(unit); }

    void beforeRun(IUnit &unit) override {
        comparison_.emplace(unit.getFullFileName());
        if (!isEmbedded(unit)) {
            comparison_->LoadFile1();
        }
    }

    void followUp(IUnit &unit, CMORYHandler *guard) override {
        const CString file = unit.getFullFileName();
        guard->commit();
        // Required even for an embedded file, whose content before the run was not loaded.
        // Test: CheckOutReload.AnEmbeddedFileIsComparedWithoutAFirstPictureAndNotReloaded.
        comparison_->LoadFile2();
        const bool isSame = comparison_->Compare() != 0;
        log("Performing ATM for the file " + file);
        if (isEmbedded(unit)) {
            return; // not part of the model: nothing to reload
        }
        if (IUnit *const reloaded = reload(unit, isSame)) {
            report().reloaded(isSame ? CMOutcome::Reload::header : CMOutcome::Reload::content, reloaded);
            batch_.replace(&unit, reloaded);
        } else {
            core::reportLoadingFailure(file, errorText());
            report().notLoaded(errorText());
            setResult(0);
            batch_.remove();
        }
    }

    void afterItem() override { comparison_.reset(); }

  private:
    static bool isEmbedded(const IUnit &unit) { return dynamic_cast<const IEmbededFile *>(&unit) != nullptr; }

    IUnit *reload(IUnit &unit, bool isSame) {
        if (isSame) {
            comparison_->atm(&unit);
            return &unit;
        }
        return core::reloadUnit(unit);
    }

    core::ReloadingBatch batch_;
    std::optional<CCMFileCompare> comparison_;
};

} // namespace

int CMCheckOut::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool /*hybrid*/) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    core::saveBeforeCheckOut(units);
    Run run(units, args, error);
    run.workThrough();
    return run.result();
}
