#include "CM/platform/posix/RunningChild.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace platform::posix {

namespace {

using namespace std::chrono_literals;

constexpr auto lingerGrace = 500ms;
constexpr auto endingGrace = 1s;
constexpr auto askInterval = 100ms;
constexpr auto checkInterval = 5ms; // only if the end of a child can't be polled for

Descriptor openAlarm(pid_t process) {
#ifdef SYS_pidfd_open
    return Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
#else
    static_cast<void>(process);
    return {};
#endif
}

} // namespace

RunningChild::~RunningChild() {
    if (process_ > 0) {
        ::kill(-process_, SIGKILL);
        ChildResult unwanted;
        reap(unwanted);
    }
}

int RunningChild::start(const std::vector<std::string> &words) {
    const bool outputGoesElsewhere = options_.outputDescriptor >= 0;
    Pipe output;
    Pipe errors;
    if ((!outputGoesElsewhere && !output.open()) || !errors.open()) {
        return errno;
    }
    const int outputTarget = outputGoesElsewhere ? options_.outputDescriptor : output.writing.get();
    pid_t process = -1;
    const int failure = spawn(words, outputTarget, errors.writing.get(), process);
    if (failure != 0) {
        return failure;
    }
    process_ = process;
    lastAsked_ = Clock::now();
    if (options_.limit) {
        deadline_ = lastAsked_ + std::max(*options_.limit, 0ms);
    }
    alarm_ = openAlarm(process_);
    output_.end = std::move(output.reading);
    errors_.end = std::move(errors.reading);
    return 0;
}

ChildResult RunningChild::collect() {
    while (!exited_ || (channelsOpen() && stage_ != Stage::killed)) {
        waitForEvents();
        watch(Clock::now());
    }
    // After a kill, a process that left the group may still hold a channel: read what is there, don't wait.
    output_.drain();
    errors_.drain();
    if (stage_ == Stage::ending) {
        ::kill(-process_, SIGKILL); // processes that ignored the request and hold no channel
    }
    ChildResult result;
    reap(result);
    if (forcedEnd_) {
        result.end = *forcedEnd_;
        result.code = 0;
    }
    result.output = std::move(output_.text);
    result.errors = std::move(errors_.text);
    return result;
}

void RunningChild::waitForEvents() {
    // poll skips a negative descriptor.
    std::array<pollfd, 3> waited{pollfd{output_.end.get(), POLLIN, 0}, pollfd{errors_.end.get(), POLLIN, 0},
                                 pollfd{exited_ ? -1 : alarm_.get(), POLLIN, 0}};
    waitWasInterrupted_ = ::poll(waited.data(), waited.size(), waitMilliseconds()) < 0;
    if (waitWasInterrupted_) {
        return;
    }
    if (waited[0].revents != 0) {
        output_.read();
    }
    if (waited[1].revents != 0) {
        errors_.read();
    }
    if (!exited_ && (waited[2].revents != 0 || !alarm_.isOpen())) {
        exited_ = hasExited();
    }
}

int RunningChild::waitMilliseconds() const {
    std::optional<Clock::duration> wait;
    const auto atMost = [&wait](Clock::duration limit) { wait = wait ? std::min(*wait, limit) : limit; };
    if (deadline_) {
        atMost(std::max<Clock::duration>(*deadline_ - Clock::now(), 0ms));
    }
    if (options_.interrupted && !forcedEnd_) {
        atMost(askInterval);
    }
    if (!alarm_.isOpen() && !exited_) {
        atMost(checkInterval);
    }
    if (!wait) {
        return -1;
    }
    const auto rounded = std::chrono::ceil<std::chrono::milliseconds>(*wait);
    return static_cast<int>(std::min(rounded, std::chrono::milliseconds(1h)).count());
}

bool RunningChild::hasExited() const {
    siginfo_t info{};
    while (::waitid(P_PID, static_cast<id_t>(process_), &info, WEXITED | WNOHANG | WNOWAIT) != 0) {
        if (errno != EINTR) {
            return true; // reaped by other code in this process
        }
    }
    return info.si_pid == process_;
}

void RunningChild::watch(Clock::time_point now) {
    if (exited_ && stage_ == Stage::running) {
        stage_ = Stage::lingering;
        deadline_ = now + lingerGrace;
    }
    if (options_.interrupted && !forcedEnd_ && !exited_ &&
        (waitWasInterrupted_ || now - lastAsked_ >= askInterval)) {
        lastAsked_ = now;
        if (options_.interrupted()) {
            forcedEnd_ = ChildResult::End::interrupted;
            endGroup(now);
            return;
        }
    }
    if (!deadline_ || now < *deadline_) {
        return;
    }
    if (stage_ == Stage::ending) {
        ::kill(-process_, SIGKILL);
        stage_ = Stage::killed;
        deadline_.reset();
    } else {
        if (stage_ == Stage::running) {
            forcedEnd_ = ChildResult::End::timedOut;
        }
        endGroup(now);
    }
}

void RunningChild::endGroup(Clock::time_point now) {
    ::kill(-process_, SIGTERM);
    ::kill(-process_, SIGCONT); // a stopped process handles no other signal
    stage_ = Stage::ending;
    deadline_ = now + endingGrace;
}

void RunningChild::reap(ChildResult &result) {
    siginfo_t info{};
    int failure = 0;
    do {
        failure = ::waitid(P_PID, static_cast<id_t>(process_), &info, WEXITED) == 0 ? 0 : errno;
    } while (failure == EINTR);
    process_ = -1;
    result.end =
        failure == 0 && info.si_code != CLD_EXITED ? ChildResult::End::killedBySignal : ChildResult::End::exited;
    result.code = failure == 0 ? info.si_status : -1;
}

} // namespace platform::posix
