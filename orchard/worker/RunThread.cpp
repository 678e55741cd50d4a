// Runs the child while the caller waits in getStatus, on the caller's own thread. The caller waits in any case, so
// that no data has to pass between threads.
#include "CM/host/RunThread.h"

#include "CM/platform/ChildProcess.h"
#include "CM/platform/PlainWords.h"
#include "orchard/worker/Lines.h"
#include "orchard/worker/RunWatch.h"

#include <chrono>
#include <cstring>
#include <utility>

namespace {

using platform::ChildResult;

/// Returns the first word of a command, as a user names the program.
std::string programOf(const std::string &command) {
    if (const auto words = platform::plainWords(command); words && !words->empty()) {
        return words->front();
    }
    return command.substr(0, command.find_first_of(" \t\n"));
}

RunEnd endOf(const ChildResult &result) {
    using Kind = RunEnd::Kind;
    switch (result.end) {
    case ChildResult::End::exited:
        return {Kind::exited, result.code, {}};
    case ChildResult::End::killedBySignal:
        return {Kind::killedBySignal, result.code, strsignal(result.code)};
    case ChildResult::End::timedOut:
        return {Kind::timedOut, 0, {}};
    case ChildResult::End::interrupted:
        return {Kind::interrupted, 0, {}};
    case ChildResult::End::notStarted:
        return {Kind::notStarted, result.code, std::strerror(result.code)};
    }
    return {};
}

/// Returns the line for standard error about a child that did not end by itself; else an empty text.
std::string lastWords(const std::string &command, const RunEnd &end) {
    switch (end.kind) {
    case RunEnd::Kind::killedBySignal:
        return "error: the command was ended by signal " + std::to_string(end.code) + " (" + end.text.str() +
               ")\n";
    case RunEnd::Kind::interrupted:
    case RunEnd::Kind::withheld:
        return "error: the command was interrupted\n";
    case RunEnd::Kind::notStarted:
        return programOf(command) + ": " + end.text.str() +
               (end.code == ENOENT ? "; is the tool installed?\n" : "\n");
    case RunEnd::Kind::unknown:
    case RunEnd::Kind::exited:
    case RunEnd::Kind::timedOut:
        break;
    }
    return {};
}

} // namespace

struct RunThread::Worker {
    std::string command;
    int outputHandle = -1;
    bool hasRun = false;
    int status = 0;
};

RunThread::RunThread(const CString &command) : RunThread(command, -1) {}

RunThread::RunThread(const CString &command, int outputHandle)
    : worker_(std::make_unique<Worker>(Worker{command.str(), outputHandle, false, 0})) {}

RunThread::~RunThread() = default;

int RunThread::getStatus(int milliseconds) {
    if (worker_->hasRun) {
        return worker_->status;
    }
    worker_->hasRun = true;
    const orchard::RunWatch &watch = orchard::runWatch();
    const bool isWithheld = watch.interrupted && watch.interrupted();
    if (watch.started && !isWithheld) {
        watch.started(worker_->command);
    }
    platform::ChildOptions options;
    if (milliseconds >= 0) {
        options.limit = std::chrono::milliseconds(milliseconds);
    }
    options.outputDescriptor = worker_->outputHandle;
    options.interrupted = watch.interrupted;
    if (isWithheld) {
        end.kind = RunEnd::Kind::withheld;
    } else {
        ChildResult result = platform::runChild(worker_->command, options);
        end = endOf(result);
        orchard::appendLines(std::move(result.output), outputLines);
        orchard::appendLines(std::move(result.errors), errorLines);
    }
    if (const std::string text = lastWords(worker_->command, end); !text.empty()) {
        // The last line of the child may lack its line end.
        const bool isOpen = !errorLines.IsEmpty() && !errorLines.GetTail().str().ends_with('\n');
        errorLines.AddTail(CString((isOpen ? "\n" : "") + text));
    }
    worker_->status = end.kind == RunEnd::Kind::timedOut ? WAIT_TIMEOUT : 0;
    if (watch.ended && !isWithheld) {
        watch.ended(end);
    }
    return worker_->status;
}

RunThreadRedirect::RunThreadRedirect(const CString &command, int handle) : RunThread(command, handle) {}
