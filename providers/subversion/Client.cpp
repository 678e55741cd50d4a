#include "providers/subversion/Client.h"

#include "providers/subversion/Failure.h"

#include <apr_strings.h>
#include <svn_error_codes.h>

namespace svnscc {

namespace {

svn_error_t *noteCommit(const svn_commit_info_t *info, void *revision, apr_pool_t * /*pool*/) {
    *static_cast<svn_revnum_t *>(revision) = info->revision;
    return SVN_NO_ERROR;
}

} // namespace

Client::Client(Context &context) : context_(context) {
    check(svn_client_create_context2(&client_, context.configuration(), pool_.get()));
    client_->auth_baton = context.credentials();
    client_->log_msg_func3 = giveComment;
    client_->log_msg_baton3 = this;
    client_->notify_func2 = notify;
    client_->notify_baton2 = this;
    client_->cancel_func = isCancelled;
    client_->cancel_baton = this;
}

apr_array_header_t *Client::list(const Names &names) {
    apr_array_header_t *array = apr_array_make(pool_.get(), static_cast<int>(names.size()), sizeof(const char *));
    for (const std::string &name : names) {
        *static_cast<const char **>(apr_array_push(array)) = apr_pstrdup(pool_.get(), name.c_str());
    }
    return array;
}

void Client::observed(const Observer &observer, const std::function<void()> &work) {
    observer_ = &observer;
    try {
        work();
    } catch (...) {
        observer_ = nullptr;
        throw;
    }
    observer_ = nullptr;
}

void Client::commented(const std::string &comment, const std::function<void()> &work) {
    comment_ = comment;
    work();
}

bool Client::commit(const Names &names, const std::string &comment, svn_depth_t depth, bool keepLocks) {
    svn_revnum_t revision = SVN_INVALID_REVNUM;
    const svn_boolean_t keepChangelists = keepLocks ? TRUE : FALSE;
    commented(comment, [&] {
        check(svn_client_commit6(list(names), depth, keepLocks ? TRUE : FALSE, keepChangelists, TRUE, FALSE, FALSE,
                                 nullptr, nullptr, noteCommit, &revision, client_, pool_.get()));
    });
    return SVN_IS_VALID_REVNUM(revision);
}

void Client::stopIfCancelled() {
    if (output().poll()) {
        throw Failure(SCC_I_OPERATIONCANCELED, "Cancelled.");
    }
}

svn_error_t *Client::giveComment(const char **comment, const char **file, const apr_array_header_t * /*items*/,
                                 void *client, apr_pool_t *pool) {
    *comment = apr_pstrdup(pool, static_cast<Client *>(client)->comment_.c_str());
    *file = nullptr;
    return SVN_NO_ERROR;
}

void Client::notify(void *client, const svn_wc_notify_t *notification, apr_pool_t * /*pool*/) {
    auto *self = static_cast<Client *>(client);
    if (self->observer_ != nullptr) {
        (*self->observer_)(*notification);
    }
    self->output().poll();
}

svn_error_t *Client::isCancelled(void *client) {
    return static_cast<Client *>(client)->output().isCancelled()
               ? svn_error_create(SVN_ERR_CANCELLED, nullptr, "Cancelled.")
               : SVN_NO_ERROR;
}

svn_opt_revision_t newest() {
    svn_opt_revision_t revision{};
    revision.kind = svn_opt_revision_head;
    return revision;
}

svn_opt_revision_t workingRevision() {
    svn_opt_revision_t revision{};
    revision.kind = svn_opt_revision_working;
    return revision;
}

} // namespace svnscc
