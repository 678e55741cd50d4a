#include "CM/CMSupport/command/LoggedRun.h"

#include "CM/CMSupport/core/CMToolShellInterface.h"
#include "CM/CMSupport/resources/Format.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace command {

namespace {

/// Logs `before` and `text` as one line. Builds the line in `text` itself and restores it afterwards, so that no
/// second text of a listing's size exists while the line is written; the insertion moves the text. For texts of
/// 1 GiB and more, copies the text.
void logWithPrefix(LogTrace::Log &log, const RunTexts &texts, const char *before, CString &text, int line) {
    constexpr std::size_t tooLongForPositions = std::size_t{1} << 30; // positions in a CString are of type int
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
              CString &errorText, OutcomeReport &report) {
    if (texts.before != nullptr) {
        log.Min(texts.source, __LINE__, texts.before + command);
    }
    CMToolRun run;
    const int result = theCMToolShellInterface()->Execute(command, output, errorText, run);
    if (texts.after != nullptr) {
        logWithPrefix(log, texts, texts.after, output, __LINE__);
    }
    if (command.IsEmpty()) {
        report.fail(CMOutcome::Kind::noCommand,
                    resources::format(resources::Text::outcomeEmptyCommand, {report.property()}));
    } else if (result == 0) {
        report.fail(CMOutcome::Kind::failed, errorText);
    } else {
        report.ran(std::move(run));
    }
    return result;
}

} // namespace command
