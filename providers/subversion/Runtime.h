// Prepares the Subversion libraries, once in a process.
#pragma once

namespace svnscc {

/// Initialises the libraries at the first call. On failure throws Failure.
void prepareRuntime();

} // namespace svnscc
