#include "apps/orchard-cm/model/Journal.h"

#include "CM/platform/CStringList.h"

#include <cerrno>
#include <cstring>

namespace orchard_cm {

namespace {

/// The first line that is not empty, and no longer than a message can be.
std::string firstLineOf(const CStringList &lines) {
    constexpr std::size_t longest = 300;
    for (const CString &line : lines) {
        std::string text = line.str();
        text.erase(text.find_last_not_of(" \t\r\n") + 1);
        if (!text.empty()) {
            return text.size() > longest ? text.substr(0, longest) + "..." : text;
        }
    }
    return {};
}

std::string withError(std::string reason, const std::string &error) {
    return error.empty() ? reason : std::move(reason) + ": " + error;
}

} // namespace

void Journal::runEnded(const orchard::ToolRun &run) {
    if (!runs_.empty()) {
        runs_.back().end = run;
        runs_.back().end.output = nullptr; // gone after this call
        runs_.back().end.errors = nullptr;
        if (run.errors != nullptr) {
            runs_.back().firstError = firstLineOf(*run.errors);
        }
        if (keepsOutput_ && run.output != nullptr) {
            for (const CString &line : *run.output) {
                runs_.back().output += line.str();
            }
        }
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
            return withError("the tool, or a program that its command names, is not installed, or not on the PATH "
                             "(exit status 127)",
                             run.firstError);
        }
        if (run.end.code != 0) {
            return withError("the tool failed with exit status " + std::to_string(run.end.code), run.firstError);
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
