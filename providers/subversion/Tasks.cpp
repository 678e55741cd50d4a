#include "providers/subversion/Tasks.h"

#include "providers/subversion/CheckIn.h"
#include "providers/subversion/Failure.h"
#include "providers/subversion/FileState.h"
#include "providers/subversion/Paths.h"
#include "providers/subversion/StatusWalk.h"
#include "providers/subversion/TaskStore.h"

#include <svn_io.h>
#include <svn_xml.h>

#include <algorithm>
#include <map>
#include <string_view>

namespace svnscc {

namespace {

using Changelists = std::map<std::string, Names>;

svn_error_t *collect(void *baton, const char *path, const char *changelist, apr_pool_t * /*pool*/) {
    if (changelist != nullptr) {
        (*static_cast<Changelists *>(baton))[changelist].emplace_back(path);
    }
    return SVN_NO_ERROR;
}

/// The files of each changelist of the working copy.
Changelists changelists(Client &client) {
    Changelists lists;
    check(svn_client_get_changelists(client.project().root.c_str(), nullptr, svn_depth_infinity, collect, &lists,
                                     client.get(), client.pool()));
    return lists;
}

/// All tasks with their files: those that were made, and the changelists that another program has made.
Changelists allTasks(Client &client) {
    Changelists tasks = changelists(client);
    for (const std::string &task : readTasks(client).tasks) {
        tasks.try_emplace(task);
    }
    return tasks;
}

void refuseBadName(const std::string &task) {
    const bool isText = svn_xml_is_xml_safe(task.data(), task.size()) != 0;
    if (!isText || task.size() >= SCC_TASK_SIZE || task.find_first_of("\t\r\n") != std::string::npos) {
        throw Failure(SCC_E_NONSPECIFICERROR, "A task can't have this name: use up to " +
                                                  std::to_string(SCC_TASK_SIZE - 1) +
                                                  " bytes of UTF-8 without tabs and line ends.");
    }
}

std::string filesText(std::size_t count) {
    return count == 0 ? "no files" : count == 1 ? "1 file" : std::to_string(count) + " files";
}

/// UTF-8, which is known to be valid, as 16-bit characters in the machine's byte order.
std::u16string utf16(std::string_view text) {
    std::u16string result;
    for (std::size_t i = 0; i < text.size();) {
        const auto first = static_cast<unsigned char>(text[i]);
        const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
        char32_t c = length == 1 ? first : first & (0xFFU >> (length + 1));
        for (std::size_t k = 1; k < length && i + k < text.size(); ++k) {
            c = (c << 6U) | (static_cast<unsigned char>(text[i + k]) & 0x3FU);
        }
        if (c >= 0x10000) {
            result += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10U));
            c = 0xDC00 + (c & 0x3FFU);
        }
        result += static_cast<char16_t>(c);
        i += length;
    }
    return result;
}

void forget(Client &client, const std::string &task) {
    TaskStore store = readTasks(client);
    std::erase(store.tasks, task);
    if (store.current == task) {
        store.current.clear();
    }
    writeTasks(client, store);
}

} // namespace

std::string currentTask(Client &client) { return readTasks(client).current; }

void setCurrentTask(Client &client, const std::string &task) {
    TaskStore store = readTasks(client);
    if (!task.empty()) {
        refuseBadName(task);
        if (!allTasks(client).contains(task)) {
            store.tasks.push_back(task);
            client.output().info("The task \"" + task + "\" is new.");
        }
    }
    store.current = task;
    writeTasks(client, store);
}

std::string createTask(Client &client) {
    const Changelists taken = allTasks(client);
    int number = 1;
    while (taken.contains("task-" + std::to_string(number))) {
        ++number;
    }
    TaskStore store = readTasks(client);
    store.tasks.push_back("task-" + std::to_string(number));
    writeTasks(client, store);
    return store.tasks.back();
}

void showTask(Client &client, const std::string &task) {
    const Changelists tasks = allTasks(client);
    const auto found = tasks.find(task);
    if (found == tasks.end()) {
        throw Failure(SCC_E_NONSPECIFICERROR, "There is no task \"" + task + "\".");
    }
    const bool isCurrent = task == currentTask(client);
    client.output().info("Task " + task + (isCurrent ? " (current): " : ": ") + filesText(found->second.size()));
    const std::vector<FileState> states = statesOf(client, found->second);
    for (std::size_t i = 0; i < states.size(); ++i) {
        const char *change = states[i].isModified ? "changed    " : "unchanged  ";
        const std::string lock = states[i].lockInArchive ? ", " + holderText(*states[i].lockInArchive) : "";
        client.output().info(change + relativeTo(client.project().root, found->second[i]) + lock);
    }
}

std::string listTasks(Client &client) {
    std::u16string text;
    for (const auto &[task, files] : allTasks(client)) {
        text += utf16(task + "\t" + filesText(files.size()) + "\n");
    }
    std::string &file = client.context().taskListFile;
    if (file.empty()) {
        const char *path = nullptr;
        check(
            svn_io_open_unique_file3(nullptr, &path, nullptr, svn_io_file_del_none, client.pool(), client.pool()));
        file = path;
    }
    check(svn_io_write_atomic2(file.c_str(), text.data(), text.size() * sizeof(char16_t), nullptr, FALSE,
                               client.pool()));
    return file;
}

SCCRTN checkInTask(Client &client, const std::string &comment) {
    const std::string task = currentTask(client);
    if (task.empty()) {
        throw Failure(SCC_E_OPNOTPERFORMED, "No task is current.");
    }
    Changelists lists = changelists(client);
    const Names &files = lists[task];
    if (files.empty()) {
        throw Failure(SCC_E_OPNOTPERFORMED, "The task \"" + task + "\" has no files.");
    }
    const SCCRTN result = checkInAnyway(client, files, comment);
    if (result != SCC_OK) {
        return result;
    }
    // Those that had nothing to check in are still in the changelist.
    check(svn_client_remove_from_changelists(client.list(files), svn_depth_empty, nullptr, client.get(),
                                             client.pool()));
    forget(client, task);
    return SCC_OK;
}

void addToCurrentTask(Client &client, const Names &names) {
    const std::string task = currentTask(client);
    if (!task.empty() && !names.empty()) {
        check(svn_client_add_to_changelist(client.list(names), task.c_str(), svn_depth_empty, nullptr,
                                           client.get(), client.pool()));
    }
}

} // namespace svnscc
