#include "providers/subversion/Inspection.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/FileState.h"
#include "providers/subversion/Paths.h"
#include "providers/subversion/StatusWalk.h"
#include "providers/subversion/Tally.h"
#include "providers/subversion/Text.h"

#include <svn_compat.h>
#include <svn_io.h>
#include <svn_props.h>
#include <svn_string.h>
#include <svn_time.h>

namespace svnscc {

namespace {

bool isControlled(const FileState &state) { return state.isInArchive || state.isNewInArchive; }

std::string orNobody(const char *author) { return author != nullptr ? author : "(no author)"; }

/// Indents the lines after the first.
std::string indented(std::string_view text) {
    std::string result;
    for (const char c : text) {
        result += c;
        result += c == '\n' ? "    " : "";
    }
    return result;
}

svn_error_t *showRevision(void *output, svn_log_entry_t *entry, apr_pool_t *pool) {
    if (!SVN_IS_VALID_REVNUM(entry->revision)) {
        return SVN_NO_ERROR; // ends the revisions of a merge
    }
    const char *author = nullptr;
    const char *date = nullptr;
    const char *message = nullptr;
    svn_compat_log_revprops_out(&author, &date, &message, entry->revprops);
    apr_time_t time = 0;
    if (date != nullptr) {
        SVN_ERR(svn_time_from_cstring(&time, date, pool));
    }
    std::string line = "r" + std::to_string(entry->revision) + "  " + timeText(time) + "  " + orNobody(author);
    line += message != nullptr && *message != '\0' ? "\n    " + indented(message) : "";
    static_cast<Output *>(output)->info(line);
    return SVN_NO_ERROR;
}

apr_array_header_t *fromNewestToFirst(apr_pool_t *pool) {
    auto *range = static_cast<svn_opt_revision_range_t *>(apr_pcalloc(pool, sizeof(svn_opt_revision_range_t)));
    range->start = newest();
    range->end.kind = svn_opt_revision_number;
    range->end.value.number = 1;
    apr_array_header_t *ranges = apr_array_make(pool, 1, sizeof(svn_opt_revision_range_t *));
    *static_cast<svn_opt_revision_range_t **>(apr_array_push(ranges)) = range;
    return ranges;
}

/// The address in the repository of a file that may be missing from the working copy.
std::string urlOf(Client &client, const std::string &name) {
    const char *root = nullptr;
    check(svn_client_url_from_path2(&root, client.project().root.c_str(), client.get(), client.pool(),
                                    client.pool()));
    return urlBelow(root, relativeTo(client.project().root, name));
}

svn_error_t *showInfo(void *output, const char * /*path*/, const svn_client_info2_t *info, apr_pool_t * /*pool*/) {
    auto &out = *static_cast<Output *>(output);
    out.info(std::string("Address: ") + info->URL);
    out.info("Revision: " + std::to_string(info->rev));
    if (SVN_IS_VALID_REVNUM(info->last_changed_rev)) {
        out.info("Last change: r" + std::to_string(info->last_changed_rev) + ", " +
                 timeText(info->last_changed_date) + ", " + orNobody(info->last_changed_author));
    }
    return SVN_NO_ERROR;
}

svn_error_t *showPropertyList(void *output, const char * /*path*/, apr_hash_t *properties,
                              apr_array_header_t * /*inherited*/, apr_pool_t *pool) {
    for (apr_hash_index_t *i = apr_hash_first(pool, properties); i != nullptr; i = apr_hash_next(i)) {
        const auto *value = static_cast<const svn_string_t *>(apr_hash_this_val(i));
        static_cast<Output *>(output)->info(std::string(static_cast<const char *>(apr_hash_this_key(i))) + ": " +
                                            indented(value->data));
    }
    return SVN_NO_ERROR;
}

/// The contents of a file in one revision, as the repository stores them: without expanded keywords.
std::string contents(Client &client, const std::string &name, const svn_opt_revision_t &revision) {
    const Pool pool(client.pool());
    svn_stringbuf_t *text = svn_stringbuf_create_empty(pool.get());
    check(svn_client_cat3(nullptr, svn_stream_from_stringbuf(text, pool.get()), name.c_str(), &revision, &revision,
                          FALSE, client.get(), pool.get(), pool.get()));
    return {text->data, text->len};
}

void refuseUnknown(const std::string &name, const FileState &state) {
    if (!isControlled(state)) {
        throw Failure(SCC_E_FILENOTCONTROLLED, name + ": not under version control");
    }
}

std::string stateText(const FileState &state) {
    std::string text = state.lockInArchive ? holderText(*state.lockInArchive) : "not checked out";
    text += state.isModified ? ", changed" : "";
    text += state.isConflicted ? ", in conflict" : "";
    text += state.isDeletedInArchive ? ", deleted in the repository" : state.isOutOfDate ? ", out of date" : "";
    return text;
}

} // namespace

SCCRTN showHistory(Client &client, const Names &names) {
    Tally tally(client.output());
    const std::vector<FileState> states = statesOf(client, names);
    const svn_opt_revision_t unspecified{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        client.stopIfCancelled();
        if (!isControlled(states[i])) {
            tally.failed(SCC_E_FILENOTCONTROLLED, names[i], "not under version control");
            continue;
        }
        client.output().info(names[i]);
        const std::string target = states[i].isNewInArchive ? urlOf(client, names[i]) : names[i];
        check(svn_client_log5(client.list({target}), &unspecified, fromNewestToFirst(client.pool()), 0, FALSE,
                              FALSE, FALSE, svn_compat_log_revprops_in(client.pool()), showRevision,
                              &client.output(), client.get(), client.pool()));
    }
    return tally.result();
}

SCCRTN showProperties(Client &client, const std::string &name) {
    const FileState state = statesOf(client, {name}).front();
    refuseUnknown(name, state);
    Output &output = client.output();
    output.info(name);
    output.info("State: " + stateText(state));
    const svn_opt_revision_t revision = state.isNewInArchive ? newest() : svn_opt_revision_t{};
    const std::string target = state.isNewInArchive ? urlOf(client, name) : name;
    check(svn_client_info4(target.c_str(), &revision, &revision, svn_depth_empty, FALSE, TRUE, FALSE, nullptr,
                           showInfo, &output, client.get(), client.pool()));
    if (!state.changelist.empty()) {
        output.info("Task: " + state.changelist);
    }
    check(svn_client_proplist4(target.c_str(), &revision, &revision, svn_depth_empty, nullptr, FALSE,
                               showPropertyList, &output, client.get(), client.pool()));
    return SCC_OK;
}

SCCRTN compare(Client &client, const std::string &name) {
    const FileState state = statesOf(client, {name}).front();
    refuseUnknown(name, state);
    if (state.isMissing) {
        throw Failure(SCC_E_FILENOTEXIST, name + ": the local file is missing");
    }
    if (state.isDeletedInArchive) {
        throw Failure(SCC_E_FILENOTCONTROLLED, name + ": deleted in the repository");
    }
    if (!state.isOutOfDate) {
        return state.isModified ? SCC_I_FILEDIFFERS : SCC_OK;
    }
    // Somebody may have checked in the very change that is here.
    return contents(client, name, workingRevision()) == contents(client, name, newest()) ? SCC_OK
                                                                                         : SCC_I_FILEDIFFERS;
}

} // namespace svnscc
