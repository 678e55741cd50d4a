#include "providers/subversion/StaticTraits.h"

#include "CM/scc/scc.h"
#include "providers/subversion/Failure.h"
#include "providers/subversion/Paths.h"

#include <svn_props.h>
#include <svn_string.h>
#include <svn_types.h>
#include <svn_wc.h>

#include <functional>

namespace svnscc {

namespace {

using PropertyReceiver = std::function<void(const std::string &path, const svn_string_t &value)>;

/// Reports each file or directory of the project that has a property.
void eachWith(Client &client, const char *property, const PropertyReceiver &receiver) {
    const svn_opt_revision_t working = workingRevision();
    apr_hash_t *values = nullptr;
    check(svn_client_propget5(&values, nullptr, property, client.project().directory.c_str(), &working, &working,
                              nullptr, svn_depth_infinity, nullptr, client.get(), client.pool(), client.pool()));
    for (apr_hash_index_t *i = apr_hash_first(client.pool(), values); i != nullptr; i = apr_hash_next(i)) {
        receiver(static_cast<const char *>(apr_hash_this_key(i)),
                 *static_cast<const svn_string_t *>(apr_hash_this_val(i)));
    }
}

bool isFixed(const svn_opt_revision_t &revision) {
    return revision.kind == svn_opt_revision_number || revision.kind == svn_opt_revision_date;
}

} // namespace

StaticTraits::StaticTraits(Client &client) {
    eachWith(client, SVN_PROP_MIME_TYPE, [&](const std::string &path, const svn_string_t &value) {
        if (svn_mime_type_is_binary(value.data) != 0) {
            binary_.insert(path);
        }
    });
    eachWith(client, SVN_PROP_EXTERNALS, [&](const std::string &directory, const svn_string_t &value) {
        apr_array_header_t *items = nullptr;
        svn_error_t *error =
            svn_wc_parse_externals_description3(&items, directory.c_str(), value.data, TRUE, client.pool());
        if (error != nullptr) {
            svn_error_clear(error); // what Subversion can't read has no files either
            return;
        }
        for (int i = 0; i < items->nelts; ++i) {
            const auto *item = APR_ARRAY_IDX(items, i, const svn_wc_external_item2_t *);
            if (isFixed(item->revision) || isFixed(item->peg_revision)) {
                pinned_.insert(joined(directory, item->target_dir));
            }
        }
    });
}

long StaticTraits::bits(const std::string &path, const FileState &state) const {
    const long noMerge = binary_.contains(path) ? SCC_STATUS_NOMERGE : 0;
    const long pinned = state.isShared && pinned_.contains(path) ? SCC_STATUS_PINNED : 0;
    return noMerge | pinned;
}

} // namespace svnscc
