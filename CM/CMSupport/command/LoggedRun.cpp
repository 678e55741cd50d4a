#include "CM/CMSupport/command/LoggedRun.h"

#include "CM/CMSupport/core/CMToolShellInterface.h"

namespace command {

int runLogged(LogTrace::Log &log, const RunTexts &texts, const CString &command, CString &output,
              CString &errorText) {
    if (texts.before != nullptr) {
        log.Min(texts.source, __LINE__, texts.before + command);
    }
    const int result = theCMToolShellInterface()->Execute(command, output, errorText, "");
    if (texts.after != nullptr) {
        log.Min(texts.source, __LINE__, texts.after + output);
    }
    return result;
}

} // namespace command
