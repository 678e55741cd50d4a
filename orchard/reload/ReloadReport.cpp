#include "orchard/reload/ReloadReport.h"

#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"

namespace orchard {

namespace {

void report(std::string text, const Problems &problems) {
    if (problems.empty()) {
        return;
    }
    LogTrace::Log log(LogTrace::Log::cm);
    for (const Problem &problem : problems) {
        log.Min("../orchard/reload", __LINE__, problem.message());
    }
    text += problems.front().message();
    if (problems.size() > 1) {
        text += " (and " + std::to_string(problems.size() - 1) + " more, see the log)";
    }
    notifyUser(text, messageLevelDefault);
}

} // namespace

void reportReloadProblems(const Problems &problems) {
    report("The file was not read into the model, which stays as it was. ", problems);
}

void reportReloadWarnings(const Problems &warnings) { report({}, warnings); }

} // namespace orchard
