#include "providers/subversion/Runtime.h"

#include "providers/subversion/Failure.h"

#include <apr_general.h>
#include <svn_dso.h>
#include <svn_error.h>
#include <svn_fs.h>
#include <svn_pools.h>
#include <svn_ra.h>
#include <svn_utf.h>

#include <mutex>

namespace svnscc {

namespace {

// The libraries keep what they are given here until the process ends, so the library of this provider is never
// unloaded (see CMakeLists.txt), and nothing here is released.
void prepare() {
    if (apr_initialize() != APR_SUCCESS) {
        throw Failure(SCC_E_INITIALIZEFAILED, "The Apache Portable Runtime could not be initialised.");
    }
    // A failed assertion in the libraries becomes an error instead of the end of the host.
    svn_error_set_malfunction_handler(svn_error_raise_on_malfunction);
    check(svn_dso_initialize2());
    apr_pool_t *const pool = svn_pool_create(nullptr);
    // File names are UTF-8, whatever the locale of the host is.
    svn_utf_initialize2(TRUE, pool);
    check(svn_fs_initialize(pool));
    check(svn_ra_initialize(pool));
}

} // namespace

void prepareRuntime() {
    static std::once_flag once;
    std::call_once(once, prepare);
}

} // namespace svnscc
