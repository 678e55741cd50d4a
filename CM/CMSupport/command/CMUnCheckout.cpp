#include "CM/CMSupport/command/CMUnCheckout.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/FollowUp.h"
#include "CM/CMSupport/core/ModelUpdate.h"
#include "CM/CMSupport/core/ReloadingBatch.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"

namespace {

constexpr auto source = "../CM/CMSupport/UnCheckout";

class UnitRun : public command::CommandRun<IUnit> {
  public:
    UnitRun(CMUnitList &units, CMArgumentList &args, CString &error)
        : CommandRun({.property = IPN::CMUnLockItem, // undo has no template of its own
                      .source = source,
                      .beforeRun = "Executing the following command to uncheck out the file: ",
                      .afterRun = "Uncheck out command returned the following: "},
                     args, error),
          batch_(units) {}

    /// Works on the units from first to last. Reloaded units replace the old ones in the list. A unit that could
    /// not be loaded stays in the list until the batch is closed, and may be deleted by then.
    void workThrough() {
        batch_.open();
        batch_.start();
        while (IUnit *const unit = batch_.next()) {
            work(unit);
        }
        batch_.close();
    }

  protected:
    void followUp(IUnit &unit, CMORYHandler * /*guard*/) override {
        if (dynamic_cast<const IEmbededFile *>(&unit) != nullptr) {
            return; // not part of the model: neither reloaded nor updated
        }
        const CString file = unit.getFullFileName();
        log("Performing ATM for the file " + file);
        IUnit *const reloaded = core::reloadUnitAndRenameFile(unit);
        if (reloaded == nullptr) {
            core::reportLoadingFailure(file, errorText());
            report().notLoaded(errorText());
            setResult(0);
            return;
        }
        report().reloaded(CMOutcome::Reload::content, reloaded);
        command::updateHeader(*reloaded);
        command::updateMode(*reloaded);
        batch_.replace(&unit, reloaded);
    }

  private:
    core::ReloadingBatch batch_;
};

class ItemRun : public command::CommandRun<CMArchiveItem> {
  public:
    ItemRun(CMArgumentList &args, CString &error)
        : CommandRun({.property = IPN::CMUnLockItem,
                      .source = source,
                      .beforeRun = "Executing the following command to uncheck out the file from the archive: ",
                      .afterRun = "Uncheck out from the archive command returned the following: "},
                     args, error) {}
};

} // namespace

int CMUnCheckout::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool /*hybrid*/) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    UnitRun run(units, args, error);
    run.workThrough();
    return run.result();
}

int CMUnCheckout::operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    ItemRun run(args, error);
    run.workAll(items);
    return run.result();
}

void CMUnCheckout::renameFileIfNeeded(IUnit *unit, const CString &oldName, CString &oldFileName) {
    core::renameFileIfNeeded(unit, oldName, oldFileName);
}
