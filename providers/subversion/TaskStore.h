// TaskStore: what a working copy remembers of tasks beside its changelists.
#pragma once

#include "providers/subversion/Client.h"

namespace svnscc {

/// The contents of a file in the administrative directory of the working copy, which no other user sees.
struct TaskStore {
    std::string current; ///< empty without a current task
    Names tasks;         ///< those that were made, in this order, with or without files
};

/// A missing file gives an empty store. On failure throws Failure.
TaskStore readTasks(Client &client);
/// Replaces the file as one step. On failure throws Failure.
void writeTasks(Client &client, const TaskStore &store);

} // namespace svnscc
