#include "CM/CMSupport/command/CMCheckOut.h"

#include "CM/CMSupport/command/CheckOutSteps.h"
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMUnitValidator.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "CM/host/Reload.h"

#include <optional>

namespace {

class Run : public command::CheckOutRun<IUnit> {
  public:
    Run(CMArgumentList &args, CString &error)
        : CheckOutRun({.property = IPN::CMCheckOut,
                       .source = "../CM/CMSupport/CheckOut",
                       .beforeRun = "Executing the following command to check out the file: ",
                       .afterRun = "Check in command returned the following: ", // of check in, deliberately
                       .guard = CMORYHandler::ORYCheckOut},
                      args, error) {}

    /// Works on the units front to back. Reloaded units take the place of the old ones in the list.
    void workThrough(CMUnitList &units, CMUnitValidator &validator) {
        for (auto next = units.GetHeadPosition(); next;) {
            const auto position = next;
            IUnit *const unit = units.GetNext(next);
            if (validator.isUnitMarkedForValidation(unit) && !validator.isValidUnit(unit)) {
                continue; // it died when an earlier unit of the batch was reloaded
            }
            reloaded_.reset();
            work(unit);
            if (!reloaded_) {
                continue;
            }
            if (*reloaded_ != nullptr) {
                units.SetAt(position, *reloaded_);
                validator.replaceUnit(unit, *reloaded_);
            } else {
                units.RemoveAt(position);
            }
        }
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
        // Also for an embedded file, whose first picture was never taken, deliberately.
        comparison_->LoadFile2();
        const bool isSame = comparison_->Compare() != 0;
        log("Performing ATM for the file " + file);
        if (isEmbedded(unit)) {
            return; // not part of the model: nothing to reload
        }
        reloaded_ = reload(unit, isSame);
        if (*reloaded_ == nullptr) {
            command::reportLoadingFailure(file, errorText());
            setResult(0);
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
        if (QuickATMFacade::CanReloadUnit(&unit, 0)) {
            return QuickATMFacade(nullptr, nullptr, nullptr, nullptr).reloadUnit(&unit, 0, 0);
        }
        return command::loadIntoModel(unit.getOwnDirectory(), unit.getFileName());
    }

    std::optional<CCMFileCompare> comparison_;
    std::optional<IUnit *> reloaded_; ///< of the unit at hand: set once it was reloaded, null if that failed
};

} // namespace

int CMCheckOut::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool /*hybrid*/) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    if (!units.IsEmpty() && command::isSaveWanted()) {
        command::saveModel();
    }
    Run run(args, error);
    if (!units.IsEmpty()) {
        command::openReloads();
    }
    run.readQuestion();
    CMFacade::removeDuplicatesFromItemList(units);
    CMUnitValidator validator;
    validator.init(units);
    run.workThrough(units, validator);
    if (!units.IsEmpty()) {
        command::closeReloads(); // not for a list that the loop has emptied, deliberately
    }
    validator.getValidUnitList(units); // in the validator's order
    return run.result();
}
