// Reads one output channel of a child: the reading end of a pipe, and the text so far.
#pragma once

#include "CM/platform/posix/Descriptor.h"

#include <cstddef>
#include <memory>
#include <string>

namespace platform::posix {

class Channel {
  public:
    Descriptor end; ///< closed when the last writer has closed its end, or on an error
    std::string text;

    /// Reads at most one chunk; blocks while the pipe is empty.
    void read();
    /// Reads all that the pipe holds, without waiting.
    void drain();

  private:
    std::unique_ptr<char[]> chunk_; // NOLINT(*-avoid-c-arrays): never initialized
    std::size_t chunkSize_ = 0;     ///< bytes; grows with the text
};

} // namespace platform::posix
