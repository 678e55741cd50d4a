#include "orchard/reload/ReloadReport.h"

#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"
#include "CM/host/Utilities.h"

namespace orchard {

namespace {

enum class Showing { always, unlessAgreed };

void report(std::string text, const Problems &problems, Showing showing) {
    if (problems.empty()) {
        return;
    }
    LogTrace::Log log(LogTrace::Log::cm);
    for (const Problem &problem : problems) {
        log.Min("../orchard/reload", __LINE__, problem.message());
    }
    if (showing == Showing::unlessAgreed && isOk2All) {
        return; // the user has accepted all such messages
    }
    text += problems.front().message();
    if (problems.size() > 1) {
        text += " (and " + std::to_string(problems.size() - 1) + " more, see the log)";
    }
    notifyUser(text, messageLevelDefault);
}

} // namespace

void reportReloadProblems(const Problems &problems) {
    report("The file was not read into the model, which is unchanged. ", problems, Showing::always);
}

void reportReloadWarnings(const Problems &warnings) { report({}, warnings, Showing::unlessAgreed); }

} // namespace orchard
