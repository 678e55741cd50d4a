#include "CM/CMSupport/provider/AddMemberSCC.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/Utilities.h"

#include <cstddef>
#include <utility>
#include <vector>

using resources::Text;

namespace {

constexpr auto source = "../CM/CMSupport/AddMemberSCC";
constexpr auto purpose = "perform Add To Archive";

/// Only the second argument is asked.
bool isSuccessSuppressed(const CMArgumentList &args) {
    CMArgument *const second = args.GetCount() < 2 ? nullptr : args.GetAt(args.FindIndex(1));
    return second != nullptr && second->substitute("shouldSuppressSCCOKMessage").CompareNoCase("Yes") == 0;
}

long callAdd(provider::ProviderRun &run, void *context, const CStringList &files, CString &comment) {
    std::vector<long> flags(static_cast<std::size_t>(files.GetCount()), SCC_FILETYPE_AUTO);
    return run.call(CMProperty::getSCCdll().SccAdd, context, files, comment.GetBuffer(0), flags.data());
}

class Run {
  public:
    Run(CMUnitList &units, const CMArgumentList &args)
        : units_(units), comment_(provider::answerOfHead(args, "log")), isSuppressed_(isSuccessSuppressed(args)) {}

    int work() {
        const bool isInOneCall = provider::isOpenProjectPropertyTrue(keys::unrollLoops);
        const int result = isInOneCall ? addInOneCall() : addOneByOne();
        if (result == 1 && hasAdded_ && !confirmsEach_ && !isSuppressed_) {
            showSuccess();
        }
        return result;
    }

  private:
    int addOneByOne() {
        for (IUnit *const unit : units_) {
            if (unit == nullptr) {
                continue;
            }
            OutcomeReport report(*unit);
            if (!report.mayBegin()) {
                continue;
            }
            // Required: no blank before "to".
            run_.log().write("Getting SCC Context for " + unit->getFullFileName() + "to " + purpose);
            pvContextStruct *const record = provider::contextFor(unit, report);
            if (record != nullptr) {
                add(*unit, record->getpvContextPtr(), report);
            }
            report.send();
            if (record == nullptr) {
                return 0;
            }
        }
        return 1;
    }

    void add(IUnit &unit, void *context, OutcomeReport &report) {
        CMORYHandler guard;
        CStringList files;
        if (!choose(unit, context, guard, files, report)) {
            return;
        }
        const long result = callAdd(run_, context, files, comment_);
        finish(guard, result);
        run_.updateAll(unit, context);
        provider::reportCall(report, CMProperty::getSCCdll().SccAdd, result);
    }

    int addInOneCall() {
        pvContextStruct *const record = run_.openSharedContext(purpose, nullptr);
        if (record == nullptr) {
            return 0;
        }
        void *const context = record->getpvContextPtr();
        CMORYHandler guard;
        provider::CallFiles call;
        for (IUnit *const unit : units_) {
            if (unit == nullptr) {
                continue;
            }
            OutcomeReport report(*unit);
            if (!report.mayBegin()) {
                continue;
            }
            if (choose(*unit, context, guard, call.files, report)) {
                call.reports.push_back(std::move(report));
            } else {
                report.send();
            }
        }
        if (call.files.IsEmpty()) {
            return 1;
        }
        const long result = callAdd(run_, context, call.files, comment_);
        finish(guard, result);
        for (IUnit *const unit : units_) {
            if (unit != nullptr) {
                run_.updateAll(*unit, context);
            }
        }
        call.send(CMProperty::getSCCdll().SccAdd, result);
        return 1;
    }

    /// Appends the unit's file unless it is in the archive already and the project wants it left out then.
    bool choose(IUnit &unit, void *context, CMORYHandler &guard, CStringList &files, OutcomeReport &report) {
        const CString path = provider::guardedPathAsIs(guard, unit, CMORYHandler::ORYAdd);
        const provider::FileState state = run_.stateOf(path, context);
        if (ignoresExisting_ && state.result == SCC_OK && state.has(SCC_STATUS_CONTROLLED)) {
            CMOutputer::writeToCMOutputWnd(resources::format(Text::fileInArchive, {path}));
            report.fail(CMOutcome::Kind::nothingToDo, Text::resultFileExists);
            return false;
        }
        files.AddTail(provider::withSingleBackslashes(path));
        return true;
    }

    void finish(CMORYHandler &guard, long result) {
        if (result != SCC_OK) {
            guard.rollBack();
            SCCTextOutProc::InternalTextOutProc(result, 0);
            return;
        }
        hasAdded_ = true;
        guard.commit();
        if (confirmsEach_) {
            showSuccess();
        }
    }

    static void showSuccess() {
        SCCTextOutProc::InternalTextOutProc(resources::text(Text::providerHasAdded), SCCTextOutProc::success);
    }

    CMUnitList &units_;
    CString comment_;
    bool isSuppressed_;
    bool confirmsEach_ = CurrentProject::Project() != nullptr && isGeneralPropertyTrue(keys::addConfirm, false);
    bool ignoresExisting_ = provider::isOpenProjectPropertyTrue(keys::ignoreExistingAtAdd);
    provider::ProviderRun run_{source};
    bool hasAdded_ = false;
};

} // namespace

int AddMemberSCC::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList & /*diags*/,
                             bool /*hybrid*/) {
    if (units.IsEmpty()) {
        return 1;
    }
    core::saveModel();
    return Run(units, args).work();
}

int AddMemberSCC::AddDirectory(CString directory, CMArgumentList &args, CMDiagnosticList & /*diags*/) {
    provider::ProviderRun run(source);
    pvContextStruct *const record = run.openSharedContext(purpose, nullptr);
    if (record == nullptr) {
        return 0;
    }
    core::saveModel();
    CString comment = provider::answerOfHead(args, "log");
    OutcomeReport report(directory);
    const char separator = oqPathSeparator();
    if (!directory.view().ends_with(separator)) {
        directory += separator;
    }
    const long result = callAdd(run, record->getpvContextPtr(), {directory}, comment);
    if (result != SCC_OK) {
        SCCTextOutProc::InternalTextOutProc(result, 0);
    }
    provider::reportCall(report, CMProperty::getSCCdll().SccAdd, result);
    report.send();
    return result == SCC_OK ? 1 : 0;
}
