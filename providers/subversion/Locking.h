// Takes and gives up locks, several in one request.
#pragma once

#include "providers/subversion/Client.h"
#include "providers/subversion/Tally.h"

namespace svnscc {

/// Locks the files and makes them writable. Reports to `tally` each that somebody else has locked meanwhile, or
/// that can't be locked for another reason. Returns those that are locked. On failure of the request throws
/// Failure.
Names lockFiles(Client &client, const Names &names, const std::string &comment, Tally &tally);

/// Gives up the locks and makes the files read-only. Returns the files whose locks are released; the others are
/// reported to `tally`. On failure of the request throws Failure.
Names unlockFiles(Client &client, const Names &names, Tally &tally);

/// Makes the working copy forget locks that the repository doesn't have any more. On failure throws Failure.
void forgetLocks(Client &client, const Names &names);

/// Makes a file read-only or writable, if it exists. On failure throws Failure.
void makeReadOnly(Client &client, const std::string &path);
void makeWritable(Client &client, const std::string &path);

} // namespace svnscc
