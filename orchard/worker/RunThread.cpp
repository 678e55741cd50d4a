// The worker. The child runs while the caller waits in getStatus, on the caller's own thread: the caller waits in
// any case, and so nothing has to be handed from one thread to another.
#include "CM/host/RunThread.h"

#include "orchard/worker/Lines.h"
#include "orchard/worker/RunWatch.h"

#include <chrono>
#include <cstring>
#include <utility>

namespace {

using platform::ChildResult;

/// The first word of a command as a user would name the program.
std::string programOf(const std::string &command) {
    if (const auto words = platform::plainWords(command); words && !words->empty()) {
        return words->front();
    }
    return command.substr(0, command.find_first_of(" \t\n"));
}

/// What is said on the error channel for a child that could not say it itself; empty for one that ended by itself.
std::string lastWords(const std::string &command, const ChildResult &result) {
    switch (result.end) {
    case ChildResult::End::killedBySignal:
        return "error: the command was ended by signal " + std::to_string(result.code) + " (" +
               strsignal(result.code) + ")\n";
    case ChildResult::End::interrupted:
        return "error: the command was interrupted\n";
    case ChildResult::End::notStarted:
        return programOf(command) + ": " + std::strerror(result.code) +
               (result.code == ENOENT ? "; is the tool installed?\n" : "\n");
    case ChildResult::End::exited:
    case ChildResult::End::timedOut:
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
    const bool isKeptBack = watch.interrupted && watch.interrupted();
    if (watch.started && !isKeptBack) {
        watch.started(worker_->command);
    }
    platform::ChildOptions options;
    if (milliseconds >= 0) {
        options.limit = std::chrono::milliseconds(milliseconds);
    }
    options.outputDescriptor = worker_->outputHandle;
    options.interrupted = watch.interrupted;
    ChildResult result;
    if (isKeptBack) {
        result.end = ChildResult::End::interrupted;
    } else {
        result = platform::runChild(worker_->command, options);
    }
    orchard::appendLines(std::move(result.output), outputLines);
    orchard::appendLines(std::move(result.errors), errorLines);
    if (const std::string text = lastWords(worker_->command, result); !text.empty()) {
        // What the child said last may lack its line end.
        const bool isOpen = !errorLines.IsEmpty() && !errorLines.GetTail().str().ends_with('\n');
        errorLines.AddTail(CString((isOpen ? "\n" : "") + text));
    }
    worker_->status = result.end == ChildResult::End::timedOut ? WAIT_TIMEOUT : 0;
    if (watch.ended && !isKeptBack) {
        watch.ended({worker_->command, result.end, result.code, &outputLines, &errorLines});
    }
    return worker_->status;
}

RunThreadRedirect::RunThreadRedirect(const CString &command, int handle) : RunThread(command, handle) {}
