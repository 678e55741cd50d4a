#include "providers/subversion/Locking.h"

#include "providers/subversion/Failure.h"

#include <svn_error_codes.h>
#include <svn_io.h>

namespace svnscc {

namespace {

/// Sorts the files by what the repository answers for each.
Client::Observer outcomes(Names &done, Tally &tally, svn_wc_notify_action_t success,
                          svn_wc_notify_action_t failure) {
    return [&done, &tally, success, failure](const svn_wc_notify_t &notification) {
        const svn_error_t *error = notification.err;
        if (notification.action == success) {
            done.emplace_back(notification.path);
        } else if (notification.action == failure) {
            tally.failed(error != nullptr ? resultOf(*error) : SCC_E_NONSPECIFICERROR, notification.path,
                         error != nullptr ? messagesOf(*error) : "the repository has refused it");
        }
    };
}

} // namespace

Names lockFiles(Client &client, const Names &names, const std::string &comment, Tally &tally) {
    Names done;
    if (names.empty()) {
        return done;
    }
    client.observed(outcomes(done, tally, svn_wc_notify_locked, svn_wc_notify_failed_lock), [&] {
        check(svn_client_lock(client.list(names), comment.c_str(), FALSE, client.get(), client.pool()));
    });
    for (const std::string &name : done) {
        makeWritable(client, name);
    }
    return done;
}

Names unlockFiles(Client &client, const Names &names, Tally &tally) {
    Names done;
    if (names.empty()) {
        return done;
    }
    client.observed(outcomes(done, tally, svn_wc_notify_unlocked, svn_wc_notify_failed_unlock),
                    [&] { check(svn_client_unlock(client.list(names), FALSE, client.get(), client.pool())); });
    for (const std::string &name : done) {
        makeReadOnly(client, name);
    }
    return done;
}

void forgetLocks(Client &client, const Names &names) {
    if (!names.empty()) {
        // The repository refuses each of them, and the working copy drops its part of the lock.
        check(svn_client_unlock(client.list(names), FALSE, client.get(), client.pool()));
    }
}

void makeReadOnly(Client &client, const std::string &path) {
    check(svn_io_set_file_read_only(path.c_str(), TRUE, client.pool()));
}

void makeWritable(Client &client, const std::string &path) {
    check(svn_io_set_file_read_write(path.c_str(), TRUE, client.pool()));
}

} // namespace svnscc
