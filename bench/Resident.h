// Measures the memory of this program.
#pragma once

namespace bench {

/// Returns the largest resident size of this program so far, in bytes. getrusage would also count the size of the
/// process that started it.
double largestResidentBytes();

} // namespace bench
