#include "CM/CMSupport/provider/ProviderRun.h"

#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/ModelUpdate.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/provider/SccQuery.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IProject.h"

#include <utility>

namespace provider {

void CallFiles::add(const CString &file, OutcomeReport report) {
    files.AddTail(file);
    reports.push_back(std::move(report));
}

void CallFiles::send(SccEntryBase &entry, long result) {
    for (OutcomeReport &report : reports) {
        reportCall(report, entry, result);
        report.send();
    }
}

pvContextStruct *ProviderRun::openContext(const CString &purpose, IUnit *unit, OutcomeReport &report) {
    log_.write("Getting SCC Context to " + purpose);
    return contextFor(unit, report);
}

pvContextStruct *ProviderRun::openSharedContext(const CString &purpose, IUnit *unit) {
    OutcomeReport report;
    pvContextStruct *const context = openContext(purpose, unit, report);
    if (report.hasFailed()) {
        report.send();
    }
    return context;
}

FileState ProviderRun::stateOf(const CString &file, void *context) {
    FileState state;
    SccEntryBase &entry = CMProperty::getSCCdll().SccQueryInfo;
    const CStringList files{file};
    std::vector<char *> array = fileArray(files);
    log_.before(entry.name(), 1, array.data());
    state.result = CMProperty::getSCCdll().SccQueryInfo(context, 1, array.data(), &state.bits);
    logResult(entry.name(), state.result);
    return state;
}

void ProviderRun::logResult(const CString &entry, long result) {
    if (logsReturn_ == LogsReturn::yes) {
        log_.after(entry);
    }
    log_.returned(entry, result);
}

IUnit *ProviderRun::reload(IUnit &unit, IUnit *(*read)(IUnit &), const CString &file, core::ReloadingBatch &batch,
                           OutcomeReport &report) {
    IUnit *const reloaded = read(unit);
    if (reloaded == nullptr) {
        CString error;
        core::reportLoadingFailure(file, error);
        report.notLoaded(error);
        batch.remove();
    } else {
        report.reloaded(CMOutcome::Reload::content, reloaded);
        batch.replace(&unit, reloaded);
    }
    return reloaded;
}

void ProviderRun::updateHeader(IUnit &unit) {
    log_.write("Updating CM Header for unit " + unit.getFullFileName());
    unit.updateCMHeader();
}

void ProviderRun::updateMode(IUnit &unit, const CString &logged) {
    log_.write(logged + unit.getFullFileName());
    unit.updateMode("");
}

void ProviderRun::updateStatus(IUnit &unit, void *context) {
    log_.write("Updating CM Status for unit " + unit.getFullFileName());
    SccQuery::queryAndSetStatus(&unit, context);
}

void ProviderRun::updateAll(IUnit &unit, void *context) {
    updateHeader(unit);
    updateMode(unit, "Updating Mode for unit ");
    updateStatus(unit, context);
}

CString guardedPathAsIs(CMORYHandler &guard, IUnit &unit, CMORYHandler::ORYOPER operation) {
    guard.setUnit(&unit);
    if (guard.startTranscation(operation) == 0) {
        return paths::join(unit.getOwnDirectory(), unit.getFileName());
    }
    CString unitPath;
    CString path;
    guard.getUnitPath(unitPath, path);
    return path;
}

CString guardedPath(CMORYHandler &guard, IUnit &unit, CMORYHandler::ORYOPER operation) {
    return withSingleBackslashes(guardedPathAsIs(guard, unit, operation));
}

CString withSingleBackslashes(CString path) {
    path.Replace("\\\\", "\\");
    return path;
}

CString answerOfHead(const CMArgumentList &args, const CString &name) {
    CMArgument *const head = args.IsEmpty() ? nullptr : args.GetHead();
    return head == nullptr ? CString() : head->substitute(name);
}

bool isOpenProjectPropertyTrue(const CString &key) {
    return CurrentProject::Project() != nullptr && isProviderPropertyTrue(key);
}

IUnit *headOf(const CMUnitList &units) { return units.IsEmpty() ? nullptr : units.GetHead(); }

bool isEmbeddedFile(const IUnit &unit) { return dynamic_cast<const IEmbededFile *>(&unit) != nullptr; }

} // namespace provider
