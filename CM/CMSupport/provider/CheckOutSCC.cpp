#include "CM/CMSupport/provider/CheckOutSCC.h"

#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/core/ModelUpdate.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/ReloadingBatch.h"
#include "CM/CMSupport/provider/ProviderCheckOut.h"
#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/Messages.h"

#include <cstddef>
#include <vector>

using provider::guardedPath;
using provider::isEmbeddedFile;

namespace {

class Run {
  public:
    Run(CMUnitList &units, const CMArgumentList &args)
        : run_("../CM/CMSupport/CheckOutSCC", args, "log"), units_(units), batch_(units) {}

    void workThrough() {
        batch_.open();
        run_.readQuestion();
        batch_.start();
        const bool isInOneCall = provider::isOpenProjectPropertyTrue(keys::unrollLoops);
        if (isInOneCall ? checkOutInOneCall() : checkOutOneByOne()) {
            close();
        }
    }

  private:
    /// Returns false without a context.
    bool checkOutOneByOne() {
        while (IUnit *const unit = batch_.next()) {
            OutcomeReport report(*unit);
            if (!report.mayBegin()) {
                continue;
            }
            context_ = run_.openContext("perform check out", unit, report);
            if (context_ != nullptr) {
                checkOut(*unit, report);
            }
            report.send();
            if (context_ == nullptr) {
                return false;
            }
        }
        return true;
    }

    void checkOut(IUnit &unit, OutcomeReport &report) {
        CMORYHandler guard;
        const CStringList files{guardedPath(guard, unit, CMORYHandler::ORYCheckOut)};
        if (!isWanted(unit, files.GetHead(), report)) {
            return;
        }
        const long result = run_.checkOut(files, context());
        provider::reportCall(report, CMProperty::getSCCdll().SccCheckout, result);
        if (result != SCC_OK) {
            fail(guard, unit.getFileName(), result);
            return;
        }
        const CString file = unit.getFullFileName();
        guard.commit();
        update(unit, file, report);
    }

    /// Returns false without a context.
    bool checkOutInOneCall() {
        context_ = run_.openSharedContext("perform check out", nullptr);
        if (context_ == nullptr) {
            return false;
        }
        CMORYHandler guard;
        std::vector<IUnit *> chosen;
        provider::CallFiles call;
        CString lastName;
        while (IUnit *const unit = batch_.next()) {
            lastName = unit->getFileName();
            OutcomeReport report(*unit);
            if (!report.mayBegin()) {
                continue;
            }
            context_ = provider::contextFor(unit, report); // required: that of the last unit is used for the call
            if (context_ == nullptr) {
                report.send();
                return false;
            }
            const CString path = guardedPath(guard, *unit, CMORYHandler::ORYCheckOut);
            if (isWanted(*unit, path, report)) {
                chosen.push_back(unit);
                call.add(path, std::move(report));
            } else {
                report.send();
            }
        }
        const long result = run_.checkOut(call.files, context());
        if (result != SCC_OK) {
            fail(guard, lastName, result); // required: the last unit's name, whichever file has failed
            call.send(CMProperty::getSCCdll().SccCheckout, result);
            return true;
        }
        guard.commit();
        for (std::size_t index = 0; index < chosen.size(); ++index) {
            if (!batch_.isAlive(chosen[index])) {
                OutcomeReport::ofDeadUnit(chosen[index]).send();
            } else {
                OutcomeReport &report = call.reports[index];
                provider::reportCall(report, CMProperty::getSCCdll().SccCheckout, result);
                update(*chosen[index], chosen[index]->getFullFileName(), report);
                report.send();
            }
        }
        return true;
    }

    bool isWanted(const IUnit &unit, const CString &path, OutcomeReport &report) {
        return run_.isWanted(unit, path, run_.stateOf(path, context()), report);
    }

    void fail(CMORYHandler &guard, const CString &name, long result) {
        guard.rollBack();
        isComplete_ = false;
        failedNames_ += (failedNames_.IsEmpty() ? "" : ", ") + name;
        SCCTextOutProc::InternalTextOutProc(result, 0);
    }

    void update(IUnit &unit, const CString &file, OutcomeReport &report) {
        run_.log().write("Performing ATM for the file " + file);
        if (!isEmbeddedFile(unit) && run_.reload(unit, core::reloadUnit, file, batch_, report) == nullptr) {
            isComplete_ = false;
        }
    }

    void close() {
        if (!isComplete_) {
            notifyUserAndAsk(resources::format(resources::Text::filesNotCheckedOut, {failedNames_}),
                             MB_ICONEXCLAMATION, 0, messageLevelDefault);
        }
        batch_.close();
        for (IUnit *const unit : units_) {
            if (unit != nullptr) {
                run_.updateMode(*unit);
                run_.updateStatus(*unit, context());
            }
        }
    }

    [[nodiscard]] void *context() const { return context_ == nullptr ? nullptr : context_->getpvContextPtr(); }

    provider::ProviderCheckOut run_;
    CMUnitList &units_;
    core::ReloadingBatch batch_;
    pvContextStruct *context_ = nullptr;
    bool isComplete_ = true;
    CString failedNames_;
};

} // namespace

int CheckOutSCC::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList & /*diags*/,
                            bool /*hybrid*/) {
    debugTrace({"Entering SCCFacade checkout\n"});
    core::saveBeforeCheckOut(units);
    Run(units, args).workThrough();
    return 0;
}
