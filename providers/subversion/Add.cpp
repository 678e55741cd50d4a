#include "providers/subversion/Add.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/FileState.h"
#include "providers/subversion/Locking.h"
#include "providers/subversion/Paths.h"
#include "providers/subversion/StatusWalk.h"
#include "providers/subversion/Tally.h"
#include "providers/subversion/Tasks.h"

#include <svn_hash.h>
#include <svn_props.h>
#include <svn_string.h>
#include <svn_types.h>

#include <filesystem>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace svnscc {

namespace {

constexpr const char *keywords = "Author Date Id Revision";
constexpr long fileTypes = SCC_FILETYPE_TEXT | SCC_FILETYPE_BINARY;

void examine(const Client &client, const std::string &name, const FileState &state, Tally &tally) {
    std::error_code error;
    const auto type = std::filesystem::symlink_status(name, error).type();
    if (!isWithin(client.project().root, name)) {
        tally.failed(SCC_E_NONSPECIFICERROR, name, "not in the working copy of the project");
    } else if (type == std::filesystem::file_type::not_found) {
        tally.failed(SCC_E_FILENOTEXIST, name, "there is no such file");
    } else if (state.isInArchive && !state.isDeletedHere) {
        tally.failed(SCC_E_FILEALREADYEXISTS, name, "under version control already");
    } else if (state.isNewInArchive) {
        tally.failed(SCC_E_FILEALREADYEXISTS, name, "somebody else has added it; get the newest version");
    } else if (type != std::filesystem::file_type::regular && type != std::filesystem::file_type::directory &&
               type != std::filesystem::file_type::symlink) {
        tally.failed(SCC_E_TYPENOTSUPPORTED, name, "not a file, a directory or a link");
    }
}

/// What will be committed: each added path, with the type that Subversion has found out; null for a text.
using Added = std::vector<std::pair<std::string, std::optional<std::string>>>;

Names pathsOf(const Added &added) {
    Names names;
    for (const auto &[path, type] : added) {
        names.push_back(path);
    }
    return names;
}

/// The svn:mime-type of a local file.
std::optional<std::string> typeOf(Client &client, const std::string &path) {
    const svn_opt_revision_t working = workingRevision();
    apr_hash_t *values = nullptr;
    check(svn_client_propget5(&values, nullptr, SVN_PROP_MIME_TYPE, path.c_str(), &working, &working, nullptr,
                              svn_depth_empty, nullptr, client.get(), client.pool(), client.pool()));
    const auto *value = static_cast<const svn_string_t *>(svn_hash_gets(values, path.c_str()));
    return value != nullptr ? std::optional<std::string>(value->data) : std::nullopt;
}

void schedule(Client &client, const Names &names, Added &added) {
    client.observed(
        [&](const svn_wc_notify_t &notification) {
            if (notification.action == svn_wc_notify_add) {
                added.emplace_back(notification.path, notification.mime_type != nullptr
                                                          ? std::optional<std::string>(notification.mime_type)
                                                          : std::nullopt);
            }
        },
        [&] {
            for (const std::string &name : names) {
                check(svn_client_add5(name.c_str(), svn_depth_empty, TRUE, TRUE, FALSE, TRUE, client.get(),
                                      client.pool()));
                client.stopIfCancelled();
            }
        });
    // Another program may have scheduled some of them already.
    const Names notified = pathsOf(added);
    const std::unordered_set<std::string> known(notified.begin(), notified.end());
    for (const std::string &name : names) {
        if (!known.contains(name)) {
            added.emplace_back(name, typeOf(client, name));
        }
    }
}

void setProperty(Client &client, const char *property, const char *value, const Names &names) {
    if (!names.empty()) {
        const svn_string_t *text = value != nullptr ? svn_string_create(value, client.pool()) : nullptr;
        check(svn_client_propset_local(property, text, client.list(names), svn_depth_empty, FALSE, nullptr,
                                       client.get(), client.pool()));
    }
}

void setProperties(Client &client, const Added &added, const std::unordered_map<std::string, long> &flags) {
    Names files;
    Names texts;
    Names forcedTexts;
    Names forcedBinaries;
    for (const auto &[path, type] : added) {
        if (!std::filesystem::is_regular_file(std::filesystem::symlink_status(path))) {
            continue;
        }
        files.push_back(path);
        const auto flag = flags.find(path);
        const long wanted = flag != flags.end() ? flag->second & fileTypes : SCC_FILETYPE_AUTO;
        const bool looksBinary = type && svn_mime_type_is_binary(type->c_str()) != 0;
        const bool isBinary = wanted == SCC_FILETYPE_BINARY || (wanted != SCC_FILETYPE_TEXT && looksBinary);
        if (!isBinary) {
            texts.push_back(path);
        }
        if (isBinary != looksBinary) {
            (isBinary ? forcedBinaries : forcedTexts).push_back(path);
        }
    }
    setProperty(client, SVN_PROP_MIME_TYPE, nullptr, forcedTexts);
    setProperty(client, SVN_PROP_EOL_STYLE, nullptr, forcedBinaries);
    setProperty(client, SVN_PROP_MIME_TYPE, "application/octet-stream", forcedBinaries);
    setProperty(client, SVN_PROP_KEYWORDS, keywords, texts);
    setProperty(client, SVN_PROP_NEEDS_LOCK, "*", files);
}

/// Forgets what schedule() has added; the files stay.
void unschedule(Client &client, const Added &added) {
    client.finish();
    svn_error_clear(svn_client_revert4(client.list(pathsOf(added)), svn_depth_infinity, nullptr, TRUE, FALSE, TRUE,
                                       client.get(), client.pool()));
}

} // namespace

SCCRTN addFiles(Client &client, const Names &names, const std::string &comment, const std::vector<long> &flags) {
    Tally tally(client.output());
    const std::vector<FileState> states = statesOf(client, names);
    std::unordered_map<std::string, long> flagsByName;
    Names kept;
    for (std::size_t i = 0; i < names.size(); ++i) {
        examine(client, names[i], states[i], tally);
        flagsByName.emplace(names[i], flags[i]);
        if ((flags[i] & SCC_KEEP_CHECKEDOUT) != 0 && !std::filesystem::is_directory(names[i])) {
            kept.push_back(names[i]);
        }
    }
    if (tally.result() != SCC_OK) {
        client.output().error("Nothing was added.");
        return tally.result();
    }
    Added added;
    try {
        schedule(client, names, added);
        setProperties(client, added, flagsByName);
        client.commit(pathsOf(added), comment, svn_depth_empty, false);
        client.finish();
    } catch (...) {
        unschedule(client, added);
        throw;
    }
    addToCurrentTask(client, lockFiles(client, kept, comment, tally));
    return tally.result();
}

} // namespace svnscc
