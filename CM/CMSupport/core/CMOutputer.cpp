#include "CM/CMSupport/core/CMOutputer.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/Environment.h"
#include "CM/host/IAbstractCMManager.h"
#include "CM/host/Messages.h"

CMOutputer &getMainCMOutputer() {
    static CMOutputer outputer;
    return outputer;
}

void CMOutputer::writeToCMOutputWnd(const CString &text) {
    if (text.IsEmpty()) {
        return;
    }
    IAbstractCMManager *const manager = IAbstractCMManager::GetCMManager();
    std::ostream *const stream = manager == nullptr ? nullptr : manager->getOutputStream();
    if (stream == nullptr) {
        return;
    }
    manager->showOutputWindow(true);
    *stream << '\n' << text << '\n' << std::flush;
}

void CMOutputer::reportLoadingErrror(const CString &text) {
    if (text.IsEmpty()) {
        return;
    }
    CString where;
    CMProperty::getToolPropertyValue(keys::reportLoadingError, where, false);
    const bool both = where.CompareNoCase("Both") == 0;
    if (both || where.CompareNoCase("Output Window") == 0) {
        writeToCMOutputWnd("ERROR : " + text);
    }
    if (both || where.CompareNoCase("Message Box") == 0) {
        notifyUserAndAsk(text, MB_ICONHAND, 0, messageLevelDefault);
    }
}

CWnd *CMOutputer::getTopMostWindow() {
    CWnd *const window = OrpAfxGetMainWnd();
    if (window == nullptr || window->IsWindowEnabled()) {
        return window;
    }
    return window->GetLastActivePopup();
}
