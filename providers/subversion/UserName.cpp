#include "providers/subversion/UserName.h"

#include "providers/subversion/Failure.h"

#include <svn_config.h>
#include <svn_hash.h>
#include <svn_string.h>
#include <svn_user.h>

#include <string_view>

namespace svnscc {

namespace {

struct Search {
    std::string realm; ///< how the realms of the server begin: "<svn://host:port>"
    std::string user;
};

/// "<svn://host:port>" for an URL of a server; empty for a local repository.
std::string realmOf(const std::string &url) {
    const std::size_t host = url.find("://") + 3;
    const std::string_view scheme = std::string_view(url).substr(0, host);
    std::string server = url.substr(host, url.find('/', host) - host);
    server.erase(0, server.find('@') + 1);
    if (scheme == "file://" || server.empty()) {
        return {};
    }
    if (server.find(':') == std::string::npos) {
        server += scheme == "https://" ? ":443" : scheme == "http://" ? ":80" : ":3690";
    }
    return "<" + std::string(scheme) + server + ">";
}

svn_error_t *inspect(svn_boolean_t *remove, void *baton, const char * /*kind*/, const char *realm,
                     apr_hash_t *data, apr_pool_t * /*pool*/) {
    *remove = FALSE;
    auto *search = static_cast<Search *>(baton);
    if (std::string_view(realm).starts_with(search->realm)) {
        const auto *name = static_cast<const svn_string_t *>(svn_hash_gets(data, SVN_CONFIG_AUTHN_USERNAME_KEY));
        search->user = name != nullptr ? name->data : "";
    }
    return SVN_NO_ERROR;
}

} // namespace

std::string userName(Client &client) {
    if (const std::string &user = client.context().user(); !user.empty()) {
        return user;
    }
    Search search{realmOf(client.project().url), {}};
    if (!search.realm.empty()) {
        const std::string &directory = client.context().settings().configDirectory;
        // Without a directory of stored passwords there is nothing to find.
        svn_error_clear(svn_config_walk_auth_data(directory.empty() ? nullptr : directory.c_str(), inspect,
                                                  &search, client.pool()));
    }
    const char *own = svn_user_get_name(client.pool());
    return !search.user.empty() || own == nullptr ? search.user : own;
}

} // namespace svnscc
