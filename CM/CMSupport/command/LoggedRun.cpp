#include "CM/CMSupport/command/LoggedRun.h"

#include "CM/CMSupport/core/CMToolShellInterface.h"

#include <cstddef>
#include <string_view>

namespace command {

namespace {

/// Logs `before` and `text` as one line. A long text is not copied: the line is made in its place for as long as
/// it is needed.
void logBehind(LogTrace::Log &log, const RunTexts &texts, const char *before, CString &text, int line) {
    constexpr std::size_t tooLongForPositions = std::size_t{1} << 30; // those of a CString are numbers of type int
    if (text.view().size() >= tooLongForPositions) {
        log.Min(texts.source, line, before + text);
        return;
    }
    text.Insert(0, before);
    log.Min(texts.source, line, text);
    text.Delete(0, static_cast<int>(std::string_view(before).size()));
}

} // namespace

int runLogged(LogTrace::Log &log, const RunTexts &texts, const CString &command, CString &output,
              CString &errorText) {
    if (texts.before != nullptr) {
        log.Min(texts.source, __LINE__, texts.before + command);
    }
    const int result = theCMToolShellInterface()->Execute(command, output, errorText, "");
    if (texts.after != nullptr) {
        logBehind(log, texts, texts.after, output, __LINE__);
    }
    return result;
}

} // namespace command
