// Keeps what a user has changed before it is overwritten.
#pragma once

#include <string>

namespace svnscc {

/// Copies a file beside itself, under a new name with ".changed" in it, and returns the path of the copy. On
/// failure throws Failure.
std::string keepCopy(const std::string &path);

} // namespace svnscc
