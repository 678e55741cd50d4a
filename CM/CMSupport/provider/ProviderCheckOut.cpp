#include "CM/CMSupport/provider/ProviderCheckOut.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/Messages.h"
#include "CM/host/Utilities.h"

#include <ostream>

using resources::Text;

namespace provider {

ProviderCheckOut::ProviderCheckOut(const char *source, const CMArgumentList &args, const CString &commentName,
                                   LogsReturn logsReturn)
    : ProviderRun(source, logsReturn) {
    if (CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(0) != 0) {
        comment_ = answerOfHead(args, commentName);
    }
}

bool ProviderCheckOut::isCheckedOut(const CString &file, FileState state) {
    constexpr long byThisUser = SCC_STATUS_CHECKEDOUT | SCC_STATUS_OUTBYUSER;
    if (state.result != SCC_OK || !oqFileExist(file) || !state.has(byThisUser)) {
        return false;
    }
    if (std::ostream *const stream = getMainCMOutputer()()) {
        *stream << resources::format(Text::fileCheckedOut, {file}) << '\n' << std::flush;
    }
    return true;
}

long ProviderCheckOut::checkOut(const CStringList &files, void *context) {
    return call(CMProperty::getSCCdll().SccCheckout, context, files, comment_.GetBuffer(0), 0L);
}

void showNothingSelected() {
    notifyUserAndAsk(resources::text(Text::nothingSelected), MB_ICONEXCLAMATION, 0, messageLevelDefault);
}

void showOutOfDate() { notifyUser(resources::text(Text::outOfDateLeftOut), messageLevelDefault); }

} // namespace provider
