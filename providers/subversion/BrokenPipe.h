// Keeps a server that closes its connection from ending the host.
#pragma once

#include <csignal>

namespace svnscc {

/// Holds SIGPIPE back in this thread for as long as it exists. A signal that came meanwhile is discarded.
class BrokenPipe {
  public:
    BrokenPipe();
    ~BrokenPipe();
    BrokenPipe(const BrokenPipe &) = delete;
    BrokenPipe &operator=(const BrokenPipe &) = delete;

  private:
    sigset_t before_{};
    bool wasPending_ = false;
};

} // namespace svnscc
