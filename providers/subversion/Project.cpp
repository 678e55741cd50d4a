#include "providers/subversion/Project.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/Paths.h"

#include <svn_error_codes.h>
#include <svn_ra.h>

#include <filesystem>
#include <optional>
#include <system_error>

namespace svnscc {

namespace {

constexpr int deepestSearch = 4096; // no path has more parts

/// The top directory of the working copy around a directory; none if there is no working copy.
std::optional<std::string> workingCopyAround(Client &client, std::string directory) {
    for (int i = 0; i < deepestSearch; ++i) {
        if (exists(directory)) {
            const char *root = nullptr;
            svn_error_t *error =
                svn_client_get_wc_root(&root, directory.c_str(), client.get(), client.pool(), client.pool());
            if (error == nullptr) {
                return root;
            }
            const bool isNone =
                error->apr_err == SVN_ERR_WC_NOT_WORKING_COPY || error->apr_err == SVN_ERR_WC_PATH_NOT_FOUND;
            if (!isNone) {
                check(error);
            }
            svn_error_clear(error);
        }
        if (directory == "/") {
            break;
        }
        directory = directoryOf(directory);
    }
    return std::nullopt;
}

/// The address of a directory in its working copy; none if the directory is not versioned.
std::optional<std::string> versionedUrl(Client &client, const std::string &directory) {
    const char *url = nullptr;
    svn_error_t *error =
        svn_client_url_from_path2(&url, directory.c_str(), client.get(), client.pool(), client.pool());
    if (error != nullptr) {
        const bool isNone =
            error->apr_err == SVN_ERR_WC_NOT_WORKING_COPY || error->apr_err == SVN_ERR_WC_PATH_NOT_FOUND ||
            error->apr_err == SVN_ERR_ENTRY_NOT_FOUND || error->apr_err == SVN_ERR_UNVERSIONED_RESOURCE;
        if (!isNone) {
            check(error);
        }
        svn_error_clear(error);
        return std::nullopt;
    }
    return url != nullptr ? std::optional<std::string>(url) : std::nullopt;
}

/// What the newest revision of the repository has at an address.
svn_node_kind_t kindAt(Client &client, const std::string &url) {
    svn_ra_session_t *session = nullptr;
    check(svn_client_open_ra_session2(&session, url.c_str(), nullptr, client.get(), client.pool(), client.pool()));
    svn_node_kind_t kind = svn_node_none;
    check(svn_ra_check_path(session, "", SVN_INVALID_REVNUM, &kind, client.pool()));
    return kind;
}

/// Adds a directory of a working copy to the repository, together with the directories above that are new as well.
Choice addDirectory(Client &client, const std::string &directory, bool mayCreate, const std::string &comment) {
    if (!mayCreate) {
        throw Failure(SCC_E_NONSPECIFICERROR, "The directory \"" + directory +
                                                  "\" is in a working copy, but not under version control yet.");
    }
    Names added;
    client.observed(
        [&](const svn_wc_notify_t &notification) {
            if (notification.action == svn_wc_notify_add) {
                added.emplace_back(notification.path);
            }
        },
        [&] {
            check(svn_client_add5(directory.c_str(), svn_depth_empty, TRUE, TRUE, FALSE, TRUE, client.get(),
                                  client.pool()));
        });
    try {
        client.commit(added, comment, svn_depth_empty, false);
    } catch (const Failure &) {
        client.finish();
        svn_error_clear(svn_client_revert4(client.list(added), svn_depth_infinity, nullptr, FALSE, FALSE, TRUE,
                                           client.get(), client.pool()));
        throw;
    }
    return {versionedUrl(client, directory).value_or(std::string()), true};
}

std::string urlFor(Client &client, const std::string &name, const std::string &directory) {
    if (looksLikeUrl(name)) {
        return internalUrl(name);
    }
    const std::string &root = client.context().settings().repositoryRoot;
    if (root.empty()) {
        throw Failure(
            SCC_E_NONSPECIFICERROR,
            "\"" + directory +
                "\" is not in a working copy, and the registry names no repository for new projects: set "
                "RepositoryRoot in HKEY_LOCAL_MACHINE\\Software\\Subversion\\SCCServer.");
    }
    return urlBelow(internalUrl(root), name.empty() ? baseName(directory) : name);
}

} // namespace

Choice chooseProject(Client &client, const std::string &name, const std::string &directory, bool mayCreate,
                     const std::string &comment) {
    if (workingCopyAround(client, directory)) {
        const auto url = versionedUrl(client, directory);
        return url ? Choice{*url, false} : addDirectory(client, directory, mayCreate, comment);
    }
    Choice choice{urlFor(client, name, directory), false};
    if (choice.url.size() > SCC_PRJPATH_LEN) {
        throw Failure(SCC_E_NONSPECIFICERROR,
                      "The address of the project is longer than the API allows: " + choice.url);
    }
    // The repository itself must exist: its root answers where a directory below may be missing.
    const svn_node_kind_t kind = kindAt(client, choice.url);
    if (kind == svn_node_file) {
        throw Failure(SCC_E_NONSPECIFICERROR, choice.url + " is a file, not a directory.");
    }
    if (kind == svn_node_none) {
        if (!mayCreate) {
            throw Failure(SCC_E_NONSPECIFICERROR, "There is no project at " + choice.url + ".");
        }
        client.commented(comment, [&] {
            check(svn_client_mkdir4(client.list({choice.url}), TRUE, nullptr, nullptr, nullptr, client.get(),
                                    client.pool()));
        });
        choice.isNew = true;
    }
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    const svn_opt_revision_t head = newest();
    check(svn_client_checkout3(nullptr, choice.url.c_str(), directory.c_str(), &head, &head, svn_depth_infinity,
                               FALSE, TRUE, client.get(), client.pool()));
    return choice;
}

Project findProject(Client &client, const std::string &url, const std::string &directory) {
    const auto root = workingCopyAround(client, directory);
    const auto local = root ? versionedUrl(client, directory) : std::nullopt;
    if (!local) {
        throw Failure(SCC_E_UNKNOWNPROJECT, "\"" + directory + "\" is not a working copy of " + url +
                                                ".\nConnect to the project again, or run \"svn checkout " + url +
                                                "\" in this directory.");
    }
    if (*local != url) {
        throw Failure(SCC_E_UNKNOWNPROJECT,
                      "\"" + directory + "\" is a working copy of " + *local + ", not of " + url +
                          ".\nUse another directory, or \"svn switch\" or \"svn relocate\".");
    }
    if (kindAt(client, url) != svn_node_dir) {
        throw Failure(SCC_E_UNKNOWNPROJECT, "The repository has no directory " + url + ".");
    }
    return {url, directory, *root};
}

} // namespace svnscc
