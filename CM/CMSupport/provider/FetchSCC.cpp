// The forms of fetch that update the model; those for a comparison are in FetchForDiffSCC.cpp.
#include "CM/CMSupport/provider/FetchSCC.h"

#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/ModelUpdate.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/ReloadingBatch.h"
#include "CM/CMSupport/provider/ItemReload.h"
#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/CMSupport/provider/SccQuery.h"
#include "CM/CMSupport/questions/CCMFetchSelection.h"
#include "CM/CMSupport/questions/WritableFileQuestion.h"

namespace {

constexpr auto source = "../CM/CMSupport/FetchSCC";

void saveBeforeFetch() {
    if (isProviderPropertyTrue(keys::saveOnFetch)) {
        core::saveModel();
    }
}

CString localPathOf(const CMArchiveItem &item) { return paths::join(item.getLocalPath(), item.getFileName()); }

class UnitRun {
  public:
    explicit UnitRun(CMUnitList &units) : batch_(units) {}

    void workThrough() {
        batch_.open();
        const WritableFileQuestion question;
        batch_.start();
        while (IUnit *const unit = batch_.next()) {
            OutcomeReport report(*unit);
            if (!report.mayBegin()) {
                continue;
            }
            if (!question.mayOverwrite(*unit)) {
                report.fail(CMOutcome::Kind::declined, resources::Text::outcomeDeclined);
                report.send();
                continue;
            }
            pvContextStruct *const record = run_.openContext("perform fetch", unit, report);
            if (record != nullptr) {
                context_ = record->getpvContextPtr();
                fetch(*unit, report);
            }
            report.send();
            if (record == nullptr) {
                return;
            }
        }
        CMUnitList alive = batch_.alive();
        SccQuery::queryAndSetStatus(alive, context_);
        batch_.close();
    }

  private:
    void fetch(IUnit &unit, OutcomeReport &report) {
        CMORYHandler guard;
        const CStringList files{pathOf(guard, unit)};
        SCCdll &library = CMProperty::getSCCdll();
        const long result = run_.call(library.SccGet, context_, files, 0L);
        provider::reportCall(report, library.SccGet, result);
        if (result != SCC_OK) {
            guard.rollBack();
            SCCTextOutProc::InternalTextOutProc(result, 0);
            return;
        }
        if (provider::isEmbeddedFile(unit)) {
            logStatus(unit);
            return; // required: the guard is not committed
        }
        const CString file = unit.getFullFileName();
        guard.commit();
        run_.log().write("Performing ATM for the file " + file);
        if (const IUnit *const reloaded = run_.reload(unit, core::reloadUnit, file, batch_, report)) {
            logStatus(*reloaded);
        }
    }

    /// Required: a backslash before the file name on every system
    /// (FetchByProvider.SeparatesTheFileNameByABackslash).
    static CString pathOf(CMORYHandler &guard, IUnit &unit) {
        guard.setUnit(&unit);
        CString path = unit.getOwnDirectory() + '\\' + unit.getFileName();
        if (guard.startTranscation(CMORYHandler::ORYFetch) != 0) {
            CString unitPath;
            guard.getUnitPath(unitPath, path);
        }
        return provider::withSingleBackslashes(path);
    }

    void logStatus(const IUnit &unit) {
        run_.log().write("Updating CM Status for unit " + unit.getFullFileName());
    }

    core::ReloadingBatch batch_;
    provider::ProviderRun run_{source};
    void *context_ = nullptr;
};

void fetch(provider::ProviderRun &run, CMArchiveItem &item, OutcomeReport &report) {
    SCCdll &library = CMProperty::getSCCdll();
    const long result = run.call(library.SccGet, CMProperty::getPvContext(), {localPathOf(item)}, 0L);
    provider::reportCall(report, library.SccGet, result);
    if (result != SCC_OK) {
        SCCTextOutProc::InternalTextOutProc(result, 0);
    } else if (CMProperty::FileNeedsATM(&item)) {
        provider::reloadItem(run, item, report);
    }
}

/// Makes the calls that the flag asks for; the result is that of the last one. The log names all of them "SccGet".
void fetchAsSelected(provider::ProviderRun &run, const CMArchiveItem &item, OutcomeReport &report) {
    SCCdll &library = CMProperty::getSCCdll();
    void *const context = CMProperty::getPvContext();
    void *const options = CMProperty::getPvOptions();
    const CStringList files{localPathOf(item)};
    std::vector<char *> array = provider::fileArray(files);
    int &flag = CCMFetchSelection::fetchOptionFlag;
    run.log().before("SccGet", 1, array.data());
    if (flag != 0) {
        library.SccUncheckout(context, run.window(), 1, array.data(), 0, options);
    }
    SccEntryBase *last = &library.SccGet;
    long result = SCC_OK;
    if (flag == 1) {
        last = &library.SccCheckout;
        result = library.SccCheckout(context, run.window(), 1, array.data(), nullptr, 0, options);
    } else {
        result = library.SccGet(context, run.window(), 1, array.data(), 0, options);
        flag = 0;
    }
    run.logResult("SccGet", result);
    provider::reportCall(report, *last, result);
    if (result != SCC_OK) {
        SCCTextOutProc::InternalTextOutProc(result, 0);
    }
}

/// Works on each item that is not null and may begin, and reports it.
template <class WORK> void workAll(const CMArchiveItemList &items, WORK work) {
    for (CMArchiveItem *const item : items) {
        if (item == nullptr) {
            continue;
        }
        OutcomeReport report(*item);
        if (report.mayBegin()) {
            work(*item, report);
            report.send();
        }
    }
}

} // namespace

int FetchSCC::operator()(CMUnitList &units, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/,
                         bool /*hybrid*/) {
    saveBeforeFetch();
    UnitRun(units).workThrough();
    return 0;
}

int FetchSCC::FetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList & /*diags*/) {
    if (items.IsEmpty()) {
        return 0;
    }
    saveBeforeFetch();
    core::openReloads();
    provider::ProviderRun run(source);
    workAll(items, [&run](CMArchiveItem &item, OutcomeReport &report) { fetch(run, item, report); });
    run.log().write("Updating CM Status for fetched units");
    SccQuery::queryAndSetStatus(items, CMProperty::getPvContext(), 0);
    core::closeReloads();
    args.RemoveAll();
    return 0;
}

int FetchSCC::RecFetchFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList & /*diags*/) {
    if (items.IsEmpty()) {
        return 0;
    }
    core::saveBeforeRecursiveCheckOut();
    provider::ProviderRun run(source);
    workAll(items, [&run](CMArchiveItem &item, OutcomeReport &report) { fetchAsSelected(run, item, report); });
    args.RemoveAll();
    return 0;
}
