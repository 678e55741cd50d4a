#include "CM/CMSupport/provider/ProviderProject.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/provider/ProviderLibrary.h"
#include "CM/CMSupport/provider/ProviderState.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/CMSupport/provider/SCCdll.h"
#include "CM/host/CurrentWorkspace.h"

#include <cstring>
#include <string_view>

namespace provider {

namespace {

constexpr auto source = "../CM/CMSupport/SCCConnectToCMRepository";
constexpr int pathSize = 4096; ///< characters of the texts that go to the provider and come back

} // namespace

ProviderProject::ProviderProject(CString &projName, CString &auxPath, OutcomeReport &report)
    : projName_(projName), auxPath_(auxPath), report_(report), log_(source) {}

bool ProviderProject::findDirectory() {
    if (CurrentWorkspace::GetActiveProject() == nullptr) {
        return false;
    }
    localPath_ = paths::workingDirectory();
    return true;
}

bool ProviderProject::initialize(pvContextStruct *&context, LogsResult logsResult) {
    if (CMProperty::getIsLoaded() == 0) {
        logCall("LoadDll");
        loadLibrary();
    }
    if (context == nullptr) {
        context = CMProperty::addPvStruct();
    }
    context_ = context;
    char caller[] = "Orchard";
    long capabilities = 0;
    Buffer auxPathLabel{};
    unsigned long checkOutCommentLength = 0;
    unsigned long commentLength = 0;
    logCall("SccInitialize");
    const long result = CMProperty::getSCCdll().SccInitialize(
        context->getpvContextPtrPtr(), topMostWindow(), caller, providerName_.data(), &capabilities,
        auxPathLabel.data(), &checkOutCommentLength, &commentLength);
    capabilities_ = static_cast<unsigned long>(capabilities);
    CMProperty::setSCCToolName(providerName()); // whatever the result is
    if (!succeeded("SccInitialize", result, logsResult)) {
        return false;
    }
    switchCancelMode();
    return true;
}

bool ProviderProject::choose(int isNew) {
    logCall("SccGetProjPath");
    const long result = CMProperty::getSCCdll().SccGetProjPath(
        context_->getpvContextPtr(), topMostWindow(), user_.data(), projName_.GetBuffer(pathSize),
        localPath_.GetBuffer(pathSize), auxPath_.GetBuffer(pathSize), 0, &isNew);
    projName_.ReleaseBuffer();
    localPath_.ReleaseBuffer();
    auxPath_.ReleaseBuffer();
    return succeeded("SccGetProjPath", result, LogsResult::no);
}

bool ProviderProject::open(LogsResult logsResult) {
    CString name = projName_; // some providers write into it, although it is theirs to read only
    char comment[] = "";
    const LPTEXTOUTPROC textOutput =
        isProviderPropertyTrue(keys::redirectOutput) ? SCCTextOutProc::IDETextOutProc : nullptr;
    logCall("SccOpenProject");
    const long result = CMProperty::getSCCdll().SccOpenProject(
        context_->getpvContextPtr(), topMostWindow(), user_.data(), name.GetBuffer(pathSize),
        localPath_.GetBuffer(pathSize), auxPath_.GetBuffer(pathSize), comment, textOutput, 0);
    localPath_.ReleaseBuffer();
    auxPath_.ReleaseBuffer();
    if (!succeeded("SccOpenProject", result, logsResult)) {
        return false;
    }
    context_->setpvContextName(projName_);
    rememberCapabilities();
    return true;
}

CString ProviderProject::providerName() const {
    return std::string_view(providerName_.data(), ::strnlen(providerName_.data(), SCC_NAME_LEN));
}

void ProviderProject::switchCancelMode() {
    if (isProviderPropertyTrue(keys::enableCancel)) {
        logCall("SccSetOption");
        CMProperty::getSCCdll().SccSetOption(context_->getpvContextPtr(), SCC_OPT_HASCANCELMODE, SCC_OPT_HCM_NO);
    }
}

void ProviderProject::rememberCapabilities() const {
    CMProperty::isSetSCC_CAP_REENTRANT((capabilities_ & SCC_CAP_REENTRANT) != 0 ? 1 : 0);
    CMProperty::isSetSCC_CAP_COMMENTCHECKOUT((capabilities_ & SCC_CAP_COMMENTCHECKOUT) != 0 ? 1 : 0);
}

void ProviderProject::logCall(const char *entry) { log_.write(CString("Invoking ") + entry); }

bool ProviderProject::succeeded(const char *entry, long result, LogsResult logsResult) {
    if (logsResult == LogsResult::yes) {
        log_.returned(entry, result);
    }
    reportCall(report_, entry, result);
    if (result == SCC_OK) {
        return true;
    }
    SCCTextOutProc::InternalTextOutProc(result, 0);
    dropLastContext();
    return false;
}

void closeContext(void *context, CallLog &log) {
    log.write("Invoking SccCloseProject");
    CMProperty::getSCCdll().SccCloseProject(context);
    log.write("Invoking SccUninitialize");
    CMProperty::getSCCdll().SccUninitialize(context);
}

void dropLastContext() {
    ProviderState &state = providerState();
    if (!state.contexts.IsEmpty()) {
        state.formerContexts.emplace_back(state.contexts.RemoveTail());
    }
}

} // namespace provider
