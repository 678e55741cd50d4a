// How much memory this program holds.
#pragma once

namespace bench {

/// The largest resident size of this program so far, in bytes. Of this program alone: what getrusage tells begins
/// with the size of the process that started it.
double largestResidentBytes();

} // namespace bench
