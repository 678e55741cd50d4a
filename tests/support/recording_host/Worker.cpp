#include "CM/host/RunThread.h"

#include "tests/support/recording_host/RecordingHost.h"

#include <stdexcept>
#include <unistd.h>

struct RunThread::Worker {
    int status = 0;
};

namespace {

void writeAll(int handle, const CString &text) {
    std::string_view rest = text;
    while (!rest.empty()) {
        const ssize_t written = ::write(handle, rest.data(), rest.size());
        if (written <= 0) {
            throw std::runtime_error("the handle of a redirected run can't be written to");
        }
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace

RunThread::RunThread(const CString &command) : RunThread(command, -1) {}

RunThread::RunThread(const CString &command, int outputHandle) : worker_(std::make_unique<Worker>()) {
    RecordingHost &host = RecordingHost::current();
    ++host.worker.alive;
    host.note(outputHandle < 0 ? "run " + command : "run redirected " + command);
    host.worker.commands.push_back(command);
    if (!host.worker.run) {
        return;
    }
    const recording::ToolRun run = host.worker.run(command);
    worker_->status = run.status;
    end = run.end;
    for (const CString &line : run.errorLines) {
        errorLines.AddTail(line);
    }
    for (const CString &line : run.outputLines) {
        if (outputHandle < 0) {
            outputLines.AddTail(line);
        } else {
            writeAll(outputHandle, line);
        }
    }
}

RunThread::~RunThread() {
    --RecordingHost::current().worker.alive;
    RecordingHost::current().note("run end");
}

int RunThread::getStatus(int milliseconds) {
    RecordingHost::current().note("wait " + std::to_string(milliseconds));
    return worker_->status;
}

RunThreadRedirect::RunThreadRedirect(const CString &command, int handle) : RunThread(command, handle) {}
