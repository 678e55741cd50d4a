// Programs that the works are compared with, started as cheaply as can be.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct Streams {
    std::string input;  ///< a file; empty for /dev/null
    std::string output; ///< a file; empty for /dev/null
};

/// Starts the program (looked up in PATH) with posix_spawn in the current directory, waits for it, and throws
/// std::runtime_error unless it ends with 0.
void runPeer(const std::vector<std::string> &words, const Streams &streams = {});

} // namespace bench
