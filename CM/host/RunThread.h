// Runs a CM tool's command as a child process.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"
#include "CM/platform/CStringList.h"

#include <memory>

constexpr int WAIT_TIMEOUT = 258;

/// Describes how the run of a command ended.
struct RunEnd {
    enum class Kind {
        unknown,        ///< the host does not report it
        exited,         ///< `code` is the exit status
        killedBySignal, ///< `code` is the number of the signal
        timedOut,       ///< the host ended it after the time limit
        interrupted,    ///< the host ended it because the user interrupted the work
        withheld,       ///< the host did not start it because the user had interrupted the work
        notStarted,     ///< `code` is the errno of the failed start
    };
    Kind kind = Kind::unknown;
    int code = 0;
    CString text; ///< the system's name of the signal or error; else empty
};

/// Runs a command and collects its output. The caller creates it with `new` and deletes it. getStatus kills the
/// child at the time limit; the destructor doesn't kill it.
class ORC_HOST_API RunThread {
  public:
    explicit RunThread(const CString &command);
    virtual ~RunThread();
    RunThread(const RunThread &) = delete;
    RunThread &operator=(const RunThread &) = delete;

    /// Waits for the child; -1 means no limit. Returns 0 at its end, WAIT_TIMEOUT if the limit was exceeded.
    int getStatus(int milliseconds);

    // The output of the two channels, with line ends. An entry may contain several lines; the concatenation of all
    // entries is the output.
    CStringList errorLines;
    CStringList outputLines;
    /// The end of the run, valid after getStatus. A host that does not know it leaves it unchanged.
    RunEnd end;

  protected:
    /// `outputHandle` is an open file descriptor for the child's output, or -1.
    RunThread(const CString &command, int outputHandle);

  private:
    struct Worker;
    std::unique_ptr<Worker> worker_;
};

/// Does the same with the child's output in an open file. The caller owns the handle.
class ORC_HOST_API RunThreadRedirect : public RunThread {
  public:
    RunThreadRedirect(const CString &command, int handle);
};
