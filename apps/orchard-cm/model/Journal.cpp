#include "apps/orchard-cm/model/Journal.h"

#include <cerrno>
#include <cstring>

namespace orchard_cm {

void Journal::runEnded(const orchard::ToolRun &run) {
    if (!runs_.empty()) {
        runs_.back().end = run;
    }
}

void Journal::error(const std::string &text) {
    (runs_.empty() ? earlyErrors_ : runs_.back().errors).push_back(text);
}

std::string failureOf(const JournalRun &run) {
    using End = platform::ChildResult::End;
    switch (run.end.end) {
    case End::exited:
        if (run.end.code == 127) {
            return "the tool is not installed, or not on the PATH (exit status 127)";
        }
        if (run.end.code != 0) {
            return "the tool failed with exit status " + std::to_string(run.end.code);
        }
        break;
    case End::killedBySignal:
        return "the tool died of signal " + std::to_string(run.end.code) + " (" + strsignal(run.end.code) + ")";
    case End::timedOut:
        return "the tool did not end within its time limit (property CMChildThreadTimeOut), and was ended";
    case End::interrupted:
        return "the tool was ended by the interruption";
    case End::notStarted:
        if (run.end.code == ENOENT) {
            return "the tool is not installed, or not on the PATH";
        }
        return std::string("the tool could not be started: ") + std::strerror(run.end.code);
    }
    return run.errors.empty() ? std::string() : run.errors.front();
}

} // namespace orchard_cm
