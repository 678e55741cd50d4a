#include "providers/subversion/TaskStore.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/Paths.h"

#include <svn_io.h>
#include <svn_string.h>
#include <svn_wc.h>

#include <sstream>

namespace svnscc {

namespace {

std::string storePath(Client &client) {
    return joined(joined(client.project().root, svn_wc_get_adm_dir(client.pool())), "scc-tasks");
}

} // namespace

TaskStore readTasks(Client &client) {
    TaskStore store;
    const std::string path = storePath(client);
    if (!exists(path)) {
        return store;
    }
    svn_stringbuf_t *text = nullptr;
    check(svn_stringbuf_from_file2(&text, path.c_str(), client.pool()));
    std::istringstream lines(std::string(text->data, text->len));
    std::getline(lines, store.current);
    for (std::string line; std::getline(lines, line);) {
        store.tasks.push_back(line);
    }
    return store;
}

void writeTasks(Client &client, const TaskStore &store) {
    std::string text = store.current + "\n";
    for (const std::string &task : store.tasks) {
        text += task + "\n";
    }
    check(
        svn_io_write_atomic2(storePath(client).c_str(), text.data(), text.size(), nullptr, FALSE, client.pool()));
}

} // namespace svnscc
