// Starts the programs that our work is compared with, as cheaply as possible.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct Streams {
    std::string input;  ///< a file; empty for /dev/null
    std::string output; ///< a file; empty for /dev/null
};

/// Starts the program (looked up in PATH) with posix_spawn in the current directory and waits for it. Throws
/// std::runtime_error unless it exits with 0.
void runPeer(const std::vector<std::string> &words, const Streams &streams = {});

} // namespace bench
