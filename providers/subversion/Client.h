// Client: the Subversion client as one entry uses it.
#pragma once

#include "providers/subversion/Context.h"
#include "providers/subversion/Pool.h"

#include <apr_tables.h>
#include <svn_client.h>

#include <functional>
#include <string>
#include <vector>

namespace svnscc {

using Names = std::vector<std::string>;

/// Lives as long as one entry, so that no working copy stays open between two calls. The user can cancel its work
/// between two files.
class Client {
  public:
    explicit Client(Context &context);
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;

    [[nodiscard]] svn_client_ctx_t *get() const { return client_; }
    [[nodiscard]] apr_pool_t *pool() const { return pool_.get(); }
    Context &context() { return context_; }
    Output &output() { return context_.output(); }
    [[nodiscard]] const Project &project() const { return context_.project(); }

    /// The names as the libraries take a list, in the client's pool.
    apr_array_header_t *list(const Names &names);

    /// What happens to each file goes to `observer` while `work` runs. The observer must not throw.
    using Observer = std::function<void(const svn_wc_notify_t &)>;
    void observed(const Observer &observer, const std::function<void()> &work);

    /// Commits the names, `depth` below each, as one revision. Returns false if there was nothing to commit. On
    /// failure throws Failure.
    bool commit(const Names &names, const std::string &comment, svn_depth_t depth, bool keepLocks);
    /// Runs what commits by itself, with this comment.
    void commented(const std::string &comment, const std::function<void()> &work);

    /// Throws Failure (SCC_I_OPERATIONCANCELED) if the user has cancelled.
    void stopIfCancelled();
    /// Makes the user's wish to cancel count no more: what follows completes or undoes what was done.
    void finish() { client_->cancel_func = nullptr; }

  private:
    static svn_error_t *giveComment(const char **comment, const char **file, const apr_array_header_t *items,
                                    void *client, apr_pool_t *pool);
    static void notify(void *client, const svn_wc_notify_t *notification, apr_pool_t *pool);
    static svn_error_t *isCancelled(void *client);

    Context &context_;
    Pool pool_;
    svn_client_ctx_t *client_ = nullptr;
    const Observer *observer_ = nullptr;
    std::string comment_;
};

/// The newest revision in the repository.
svn_opt_revision_t newest();
/// The revision of the working copy, with or without local changes.
svn_opt_revision_t workingRevision();

} // namespace svnscc
