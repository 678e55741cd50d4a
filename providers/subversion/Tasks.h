// Tasks: a task is a changelist of the working copy, and one of them is the current one.
#pragma once

#include "providers/subversion/Client.h"

#include "CM/scc/scc.h"

namespace svnscc {

/// The identifier of the working copy's current task; empty without one. On failure throws Failure, as all of
/// these do.
std::string currentTask(Client &client);

/// Makes a task the current one; a new one if there is none with this name. An empty name leaves no task current.
void setCurrentTask(Client &client, const std::string &task);

/// Makes a new task and returns its name, "task-1" or the next that is free. The current task stays.
std::string createTask(Client &client);

/// Shows the files of a task with their states. Throws Failure for a task that there isn't.
void showTask(Client &client, const std::string &task);

/// Writes the tasks into a file, as text in 16-bit characters of the machine's byte order: a line for each, with
/// its name, a tab, and what it holds. Returns the path of the file, which is the context's.
std::string listTasks(Client &client);

/// Commits the files of the current task, releases their locks, and ends the task.
SCCRTN checkInTask(Client &client, const std::string &comment);

/// Makes files that are checked out part of the current task, if there is one.
void addToCurrentTask(Client &client, const Names &names);

} // namespace svnscc
