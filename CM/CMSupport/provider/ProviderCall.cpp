#include "CM/CMSupport/provider/ProviderCall.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/provider/ProviderLibrary.h"
#include "CM/CMSupport/provider/ResultTexts.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/scc/scc.h"

#include <cstddef>
#include <string>

namespace provider {

void CallLog::write(const CString &text) { log_.Min(source_, __LINE__, text); }

void CallLog::before(const CString &entry) {
    CString line;
    CMProperty::getPreSCCCallLogMsg(entry, line);
    write(line);
}

void CallLog::before(const CString &entry, const CString &file) {
    CString line;
    CMProperty::getPreSCCCallLogMsg(entry, file.c_str(), line);
    write(line);
}

void CallLog::before(const CString &entry, long count, const char *const *files) {
    CString line;
    CMProperty::getPreSCCCallLogMsg(entry, count, files, line);
    write(line);
}

void CallLog::after(const CString &entry) {
    CString line;
    CMProperty::getPostSCCCallLogMsg(entry, line);
    write(line);
}

void CallLog::returned(const CString &entry, long result) {
    CString line;
    CMProperty::getSCCReturnLogMsg(entry, result, line);
    write(line);
}

std::vector<char *> fileArray(const CStringList &files) {
    std::vector<char *> array;
    array.reserve(static_cast<std::size_t>(files.GetCount()) + 1);
    for (const CString &file : files) {
        array.push_back(const_cast<char *>(file.c_str())); // the API's type, though providers only read
    }
    array.push_back(nullptr);
    return array;
}

void reportCall(OutcomeReport &report, const CString &entry, long result) {
    if (result != SCC_OK) {
        CString reason = resultText(result);
        if (reason.IsEmpty()) {
            reason = resources::format(resources::Text::callFailed, {entry, std::to_string(result)});
        }
        report.fail(result == SCC_I_OPERATIONCANCELED ? CMOutcome::Kind::declined : CMOutcome::Kind::failed,
                    reason);
    }
    report.ran({.command = entry, .result = static_cast<int>(result)});
}

void reportCall(OutcomeReport &report, SccEntryBase &entry, long result) {
    reportLibrary(report);
    if (!entry.isExported()) {
        report.fail(CMOutcome::Kind::noCommand,
                    resources::format(resources::Text::outcomeNoEntry, {entry.name()}));
    }
    reportCall(report, CString(entry.name()), result);
}

HWND topMostWindow() {
    CWnd *const window = CMOutputer::getTopMostWindow();
    return window == nullptr ? nullptr : window->GetSafeHwnd();
}

} // namespace provider
