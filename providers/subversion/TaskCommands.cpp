// The entries for tasks, which extend the published API.
#include "providers/subversion/EntryCall.h"
#include "providers/subversion/Failure.h"
#include "providers/subversion/Tasks.h"
#include "providers/subversion/Text.h"

#include "CM/scc/scc.h"

using namespace svnscc;

namespace {

void give(char *buffer, std::size_t size, const std::string &text) {
    if (!copyInto(buffer, size, text)) {
        throw Failure(SCC_E_NONSPECIFICERROR, "\"" + text + "\" does not fit into the buffer of the host.");
    }
}

std::string taskName(const char *task) {
    if (task == nullptr) {
        throw Failure(SCC_E_NONSPECIFICERROR, "The name of the task is missing.");
    }
    return task;
}

} // namespace

long SccCheckinTask(void *context, char *comment) {
    return runInProject(context, [&](Client &client) { return checkInTask(client, commentText(comment)); });
}

long SccSetTask(void *context, char *task) {
    return runInProject(context, [&](Client &client) {
        setCurrentTask(client, taskName(task));
        return SCC_OK;
    });
}

long SccGetDefaultTask(void *context, char *task) {
    return runInProject(context, [&](Client &client) {
        give(task, SCC_TASK_SIZE, currentTask(client));
        return SCC_OK;
    });
}

long SccCreateTask(void *context, void * /*reserved*/) {
    return runInProject(context, [](Client &client) {
        client.output().info("Created the task \"" + createTask(client) + "\".");
        return SCC_OK;
    });
}

long SccShowTask(void *context, char *task) {
    return runInProject(context, [&](Client &client) {
        showTask(client, taskName(task));
        return SCC_OK;
    });
}

long SccListTasks(void *context, char *file) {
    return runInProject(context, [&](Client &client) {
        give(file, SCC_TASKFILE_SIZE, listTasks(client));
        return SCC_OK;
    });
}
