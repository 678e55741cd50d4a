#include "CM/CMSupport/provider/SCCTextOutProc.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/provider/ResultTexts.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/Messages.h"
#include "CM/scc/scc.h"

#include <ostream>

using resources::Text;

namespace {

int show(const CString &text, unsigned int icon) { return notifyUserAndAsk(text, icon, 0, messageLevelDefault); }

} // namespace

long SCCTextOutProc::IDETextOutProc(char const *text, unsigned long /*kind*/) {
    std::ostream *const stream = getMainCMOutputer()();
    if (stream != nullptr && text != nullptr) {
        *stream << text << '\n' << std::flush;
    }
    return SCC_MSG_RTN_OK;
}

int SCCTextOutProc::InternalTextOutProc(long result, int toOutputWindow) {
    const CString message = provider::resultText(result);
    const bool isError = result < SCC_OK && !message.IsEmpty(); // a code that the API doesn't define is a warning
    CString text;
    if (result != SCC_E_NONSPECIFICERROR) {
        text = resources::text(isError ? Text::providerErrorOpening : Text::providerWarningOpening);
    }
    text += message + resources::text(Text::providerClosing);
    if (toOutputWindow != 0) {
        CMOutputer::writeToCMOutputWnd(text);
    } else {
        InternalTextOutProc(text.c_str(), isError ? error : warning);
    }
    return 1;
}

int SCCTextOutProc::InternalTextOutProc(char const *text, unsigned long level) {
    switch (level) {
    case information:
        show(text, MB_ICONINFORMATION);
        break;
    case warning:
        show(text, MB_ICONEXCLAMATION);
        break;
    case error:
        show(text, MB_ICONHAND);
        break;
    case success:
        InternalTextOutProc(resources::format(Text::providerSuccess, {CString(text).view()}).c_str(), information);
        break;
    default:
        break;
    }
    return 0;
}
