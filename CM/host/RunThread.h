// The worker that runs a CM tool's command as a child process.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"
#include "CM/platform/CStringList.h"

#include <memory>

constexpr int WAIT_TIMEOUT = 258;

/// Runs a command and collects what it writes. Made by new, deleted by the caller. The
/// child is ended where the limit of getStatus runs out, not by the deletion of this object.
class ORC_HOST_API RunThread {
  public:
    explicit RunThread(const CString &command);
    virtual ~RunThread();
    RunThread(const RunThread &) = delete;
    RunThread &operator=(const RunThread &) = delete;

    /// Waits for the end of the child, -1 without limit. 0 at its end; WAIT_TIMEOUT if the limit ran out.
    int getStatus(int milliseconds);

    // What came on the two channels; each line keeps its line end. An entry may hold several lines: only all
    // entries put together are the text.
    CStringList errorLines;
    CStringList outputLines;

  protected:
    /// `outputHandle` is an open file descriptor that the child's output goes to, or -1.
    RunThread(const CString &command, int outputHandle);

  private:
    struct Worker;
    std::unique_ptr<Worker> worker_;
};

/// The same, with the child's output going to an open file. The handle stays the caller's.
class ORC_HOST_API RunThreadRedirect : public RunThread {
  public:
    RunThreadRedirect(const CString &command, int handle);
};
