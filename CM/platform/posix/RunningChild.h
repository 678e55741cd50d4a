// Manages a started child: collects its channels, checks the time limit, ends its group, reaps it.
#pragma once

#include "CM/platform/ChildProcess.h"
#include "CM/platform/posix/Channel.h"
#include "CM/platform/posix/Spawn.h"

#include <chrono>

namespace platform::posix {

/// The first process of the group is reaped only after the group has ended, so that the system can't reuse the
/// group's number in the meantime.
class RunningChild {
  public:
    explicit RunningChild(const ChildOptions &options) : options_(options) {}
    /// Kills the group and reaps the child if an exception has left it running.
    ~RunningChild();
    RunningChild(const RunningChild &) = delete;
    RunningChild &operator=(const RunningChild &) = delete;

    /// Starts the program; returns 0 or an errno.
    int start(const std::vector<std::string> &words);
    /// Waits for the end of the started child.
    ChildResult collect();

  private:
    using Clock = std::chrono::steady_clock;

    enum class Stage {
        running,   ///< the child runs
        lingering, ///< the child has ended, a process of its group holds a channel
        ending,    ///< the group has been asked to end
        killed     ///< the group has been killed
    };

    [[nodiscard]] bool channelsOpen() const { return output_.end.isOpen() || errors_.end.isOpen(); }
    void waitForEvents();
    [[nodiscard]] int waitMilliseconds() const;
    [[nodiscard]] bool hasExited() const;
    void watch(Clock::time_point now);
    void endGroup(Clock::time_point now);
    void reap(ChildResult &result);

    const ChildOptions &options_;
    pid_t process_ = -1; ///< -1 before the start and after the reaping
    Descriptor alarm_;   ///< becomes readable when the child ends; not open without pidfd_open
    Channel output_;
    Channel errors_;
    Stage stage_ = Stage::running;
    bool exited_ = false;
    bool waitWasInterrupted_ = false;
    std::optional<ChildResult::End> forcedEnd_;
    std::optional<Clock::time_point> deadline_; ///< of the current stage
    Clock::time_point lastAsked_;
};

} // namespace platform::posix
