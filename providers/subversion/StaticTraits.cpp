#include "providers/subversion/StaticTraits.h"

#include "CM/scc/scc.h"
#include "providers/subversion/Failure.h"
#include "providers/subversion/Paths.h"

#include <svn_props.h>
#include <svn_string.h>
#include <svn_types.h>
#include <svn_wc.h>

#include <algorithm>
#include <functional>

namespace svnscc {

namespace {

using PropertyReceiver = std::function<void(const std::string &path, const svn_string_t &value)>;

/// Reports each file or directory at a path, or below it, that has a property.
void eachWith(Client &client, const char *property, const std::string &path, svn_depth_t depth,
              const PropertyReceiver &receiver) {
    const svn_opt_revision_t working = workingRevision();
    apr_hash_t *values = nullptr;
    check(svn_client_propget5(&values, nullptr, property, path.c_str(), &working, &working, nullptr, depth,
                              nullptr, client.get(), client.pool(), client.pool()));
    for (apr_hash_index_t *i = apr_hash_first(client.pool(), values); i != nullptr; i = apr_hash_next(i)) {
        receiver(static_cast<const char *>(apr_hash_this_key(i)),
                 *static_cast<const svn_string_t *>(apr_hash_this_val(i)));
    }
}

bool isFixed(const svn_opt_revision_t &revision) {
    return revision.kind == svn_opt_revision_number || revision.kind == svn_opt_revision_date;
}

} // namespace

StaticTraits StaticTraits::ofProject(Client &client) {
    StaticTraits traits;
    traits.readTypes(client, client.project().directory, svn_depth_infinity);
    traits.readExternals(client);
    return traits;
}

StaticTraits StaticTraits::ofFiles(Client &client, const Names &names, const std::vector<FileState> &states) {
    constexpr std::size_t few = 16;
    StaticTraits traits;
    if (names.size() > few) {
        traits.readTypes(client, client.project().directory, svn_depth_infinity);
    }
    for (std::size_t i = 0; i < names.size() && names.size() <= few; ++i) {
        if (states[i].isInArchive && !states[i].isDeletedHere) {
            traits.readTypes(client, names[i], svn_depth_empty);
        }
    }
    if (std::any_of(states.begin(), states.end(), [](const FileState &state) { return state.isShared; })) {
        traits.readExternals(client);
    }
    return traits;
}

void StaticTraits::readTypes(Client &client, const std::string &path, svn_depth_t depth) {
    eachWith(client, SVN_PROP_MIME_TYPE, path, depth, [&](const std::string &file, const svn_string_t &value) {
        if (svn_mime_type_is_binary(value.data) != 0) {
            binary_.insert(file);
        }
    });
}

void StaticTraits::readExternals(Client &client) {
    eachWith(client, SVN_PROP_EXTERNALS, client.project().directory, svn_depth_infinity,
             [&](const std::string &directory, const svn_string_t &value) {
                 apr_array_header_t *items = nullptr;
                 svn_error_t *error = svn_wc_parse_externals_description3(&items, directory.c_str(), value.data,
                                                                          TRUE, client.pool());
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
