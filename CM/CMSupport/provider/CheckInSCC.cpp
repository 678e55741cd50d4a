#include "CM/CMSupport/provider/CheckInSCC.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMSuppressOKMessage.h"
#include "CM/CMSupport/core/CMTranscation.h"
#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/provider/AddMemberSCC.h"
#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/CMSupport/resources/Format.h"

#include <string>
#include <utility>
#include <vector>

using resources::Text;

namespace {

class Run {
  public:
    Run(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags)
        : units_(units), args_(args), diags_(diags), comment_(provider::answerOfHead(args, "log")) {}

    int work() {
        pvContextStruct *const record = run_.openSharedContext("perform check in", provider::headOf(units_));
        if (record == nullptr) {
            return 0;
        }
        context_ = record->getpvContextPtr();
        for (IUnit *const unit : units_) {
            if (unit != nullptr) {
                sort(*unit);
            }
        }
        if (call_.files.IsEmpty()) {
            if (!added_.IsEmpty()) {
                add();
            }
            sendSkipped();
            return 1;
        }
        addQuietly();
        checkIn();
        return 0; // required, also after a success
    }

  private:
    /// Decides whether the unit is checked in, added or left out.
    void sort(IUnit &unit) {
        OutcomeReport report(unit);
        if (!report.mayBegin()) {
            return;
        }
        const CString path = provider::guardedPath(guard_, unit, CMORYHandler::ORYCheckIn);
        const provider::FileState state = run_.stateOf(path, context_);
        run_.log().write("File Status is " + std::to_string(state.bits));
        const bool isKnown = state.result == SCC_OK; // an unknown file is tried
        if (isKnown && !state.has(SCC_STATUS_CONTROLLED)) {
            CMOutputer::writeToCMOutputWnd(
                resources::format(addsNew_ ? Text::fileWillBeAdded : Text::fileNotControlled, {path}));
            if (addsNew_) {
                added_.AddTail(&unit); // reported when it is added
            } else {
                skip(std::move(report), CMOutcome::Kind::refused, Text::resultNotControlled);
            }
        } else if (isKnown && !state.has(SCC_STATUS_CHECKEDOUT)) {
            CMOutputer::writeToCMOutputWnd(resources::format(Text::fileNotCheckedOut, {path}));
            skip(std::move(report), CMOutcome::Kind::nothingToDo, Text::resultNotCheckedOut);
        } else {
            call_.add(path, std::move(report));
        }
    }

    void skip(OutcomeReport report, CMOutcome::Kind kind, Text reason) {
        report.fail(kind, reason);
        skipped_.push_back(std::move(report));
    }

    /// Adds the new units in a transaction of its own, as the facade does on this route.
    void add() {
        const CMTranscation transaction(nullptr, 1, CMTxnAdd, "");
        if (transaction.isValidTranscation()) {
            CMTranscation::checkUnitsForOperation(added_);
            AddMemberSCC()(added_, args_, diags_, false);
        }
    }

    void addQuietly() {
        // Required: the argument stays in the caller's list, so it must outlive this call
        // (CheckInByProvider.LeavesTheSuppressingArgumentInTheList).
        static CMSuppressOKMessage suppressing("Yes");
        args_.AddTail(&suppressing);
        add(); // required also without new units
    }

    void checkIn() {
        SCCdll &library = CMProperty::getSCCdll();
        const long result = run_.call(library.SccCheckin, context_, call_.files, comment_.GetBuffer(0), 0L);
        if (result == SCC_OK) {
            guard_.commit();
            SCCTextOutProc::InternalTextOutProc(resources::text(Text::providerHasCheckedIn),
                                                SCCTextOutProc::success);
        } else {
            guard_.rollBack();
            SCCTextOutProc::InternalTextOutProc(result, 0);
        }
        for (IUnit *const unit : units_) {
            if (unit != nullptr) {
                run_.updateAll(*unit, context_);
            }
        }
        call_.send(library.SccCheckin, result);
        sendSkipped();
    }

    void sendSkipped() {
        for (OutcomeReport &report : skipped_) {
            report.send();
        }
    }

    CMUnitList &units_;
    CMArgumentList &args_;
    CMDiagnosticList &diags_;
    provider::ProviderRun run_{"../CM/CMSupport/CheckInSCC", provider::ProviderRun::LogsReturn::no};
    CString comment_;
    bool addsNew_ = provider::isOpenProjectPropertyTrue(keys::addNewAtCheckIn);
    void *context_ = nullptr;
    CMORYHandler guard_;
    CMUnitList added_;
    provider::CallFiles call_;
    std::vector<OutcomeReport> skipped_;
};

} // namespace

int CheckInSCC::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool /*hybrid*/) {
    debugTrace({"Entering CheckInSCC\n"});
    if (!units.IsEmpty()) {
        core::saveModel();
    }
    return Run(units, args, diags).work();
}
