// Owns a memory pool of the Subversion libraries.
#pragma once

#include <svn_pools.h>

namespace svnscc {

class Pool {
  public:
    /// Creates a pool below `parent`, with which it ends too; a pool of its own without one.
    explicit Pool(apr_pool_t *parent = nullptr) : pool_(svn_pool_create(parent)) {}
    ~Pool() { svn_pool_destroy(pool_); }
    Pool(const Pool &) = delete;
    Pool &operator=(const Pool &) = delete;

    [[nodiscard]] apr_pool_t *get() const { return pool_; }

  private:
    apr_pool_t *pool_;
};

} // namespace svnscc
