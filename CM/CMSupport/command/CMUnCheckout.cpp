#include "CM/CMSupport/command/CMUnCheckout.h"

#include "CM/CMSupport/command/BatchSteps.h"
#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/FollowUp.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMUnitValidator.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "CM/host/Reload.h"

#include <optional>

namespace {

constexpr auto source = "../CM/CMSupport/UnCheckout";

class UnitRun : public command::CommandRun<IUnit> {
  public:
    UnitRun(CMUnCheckout &operation, CMArgumentList &args, CString &error)
        : CommandRun({.property = IPN::CMUnLockItem, // there is no template of its own
                      .source = source,
                      .beforeRun = "Executing the following command to uncheck out the file: ",
                      .afterRun = "Uncheck out command returned the following: "},
                     args, error),
          operation_(operation) {}

    /// Works on the units front to back. Reloaded units take the place of the old ones in the list; one that could
    /// not be loaded stays, and may be dead.
    void workThrough(CMUnitList &units, CMUnitValidator &validator) {
        for (auto next = units.GetHeadPosition(); next;) {
            const auto position = next;
            IUnit *const unit = units.GetNext(next);
            if (validator.isUnitMarkedForValidation(unit) && !validator.isValidUnit(unit)) {
                continue; // it died when an earlier unit of the batch was reloaded
            }
            reloaded_ = nullptr;
            work(unit);
            if (reloaded_ != nullptr) {
                units.SetAt(position, reloaded_);
                validator.replaceUnit(unit, reloaded_);
            }
        }
    }

  protected:
    void followUp(IUnit &unit, CMORYHandler * /*guard*/) override {
        if (dynamic_cast<const IEmbededFile *>(&unit) != nullptr) {
            return; // not part of the model: no reload, and no update of header and mode either
        }
        const CString file = unit.getFullFileName();
        log("Performing ATM for the file " + file);
        reloaded_ = reload(unit);
        if (reloaded_ == nullptr) {
            command::reportLoadingFailure(file, errorText());
            setResult(0);
            return;
        }
        command::updateHeader(*reloaded_);
        command::updateMode(*reloaded_);
    }

  private:
    IUnit *reload(IUnit &unit) {
        if (!QuickATMFacade::CanReloadUnit(&unit, 0)) {
            return command::loadIntoModel(unit.getOwnDirectory(), unit.getFileName());
        }
        QuickATMFacade scope(nullptr, nullptr, nullptr, nullptr);
        CString oldFileName = unit.getFileNameNoExt();
        const CString oldName = unit.getName();
        IUnit *const newUnit = scope.reloadUnit(&unit, 0, 0);
        operation_.renameFileIfNeeded(newUnit, oldName, oldFileName);
        return newUnit;
    }

    CMUnCheckout &operation_;
    IUnit *reloaded_ = nullptr; ///< what the reload of the unit at hand gave
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
    UnitRun run(*this, args, error);
    if (!units.IsEmpty()) {
        command::openReloads();
    }
    CMFacade::removeDuplicatesFromItemList(units);
    CMUnitValidator validator;
    validator.init(units);
    run.workThrough(units, validator);
    if (!units.IsEmpty()) {
        command::closeReloads(); // not for a list of nothing but null entries, deliberately
    }
    validator.getValidUnitList(units); // in the validator's order
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
    if (unit == nullptr || oldFileName != oldName) {
        return; // only a file that was named after its unit follows it
    }
    const CString name = unit->getName();
    if (name == oldName) {
        return;
    }
    const auto *const owner = dynamic_cast<const IUnit *>(unit->getOwner());
    if (owner == nullptr || owner->keepsPartFileName("") != 0) {
        return;
    }
    if (unit->approveCMRename(name)) {
        unit->setFileName(name);
    }
}
