// Finds the states of many files in one walk.
#pragma once

#include "providers/subversion/Client.h"
#include "providers/subversion/FileState.h"

#include <functional>
#include <vector>

namespace svnscc {

/// The states of the names, in their order, compared with the newest revision of the repository, which is asked
/// once for all of them. A name that isn't in the project's working copy, or that Subversion doesn't know, has the
/// state of an unknown file. On failure throws Failure.
std::vector<FileState> statesOf(Client &client, const Names &names);

/// Reports the state of each file and directory that is within `directory`, itself included, in the same way.
/// Files that Subversion doesn't know are reported too. The receiver may throw Failure, which ends the walk.
using StateReceiver = std::function<void(const std::string &path, const svn_client_status_t &status)>;
void walk(Client &client, const std::string &directory, svn_depth_t depth, const StateReceiver &receiver);

} // namespace svnscc
