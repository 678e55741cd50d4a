#include "providers/subversion/Failure.h"

#include <apr_errno.h>
#include <svn_error_codes.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace svnscc {

namespace {

struct Meaning {
    apr_status_t code;
    SCCRTN result;
    std::string_view hint; ///< what the user can do; may be empty
};

constexpr std::string_view unreachable = "Check that the repository exists and that its server can be reached, "
                                         "then try again. Local files are unchanged.";
constexpr std::string_view logIn =
    "Check the user name, and log in once with \"svn info URL\", so that Subversion stores the password.";
constexpr std::string_view forbidden = "Ask the administrator of the repository for the permission.";
constexpr std::string_view cleanUp =
    "If no other program works in this working copy, run \"svn cleanup\" in its top directory, then try again.";
constexpr std::string_view getFirst = "Get the newest version first, then try again. Local changes are kept.";
constexpr std::string_view freeSpace = "Free some space on the disk, then run \"svn cleanup\" and try again.";
constexpr std::string_view newerProgram = "Run \"svn upgrade\" in the top directory of the working copy.";

// Each code that has a result of its own. A chain of errors takes the first that is found, outermost error first.
constexpr std::array meanings = {
    Meaning{SVN_ERR_CANCELLED, SCC_I_OPERATIONCANCELED, ""},
    Meaning{SVN_ERR_RA_NOT_AUTHORIZED, SCC_E_NOTAUTHORIZED, logIn},
    Meaning{SVN_ERR_AUTHN_CREDS_UNAVAILABLE, SCC_E_NOTAUTHORIZED, logIn},
    Meaning{SVN_ERR_AUTHN_NO_PROVIDER, SCC_E_NOTAUTHORIZED, logIn},
    Meaning{SVN_ERR_AUTHN_PROVIDERS_EXHAUSTED, SCC_E_NOTAUTHORIZED, logIn},
    Meaning{SVN_ERR_AUTHN_FAILED, SCC_E_NOTAUTHORIZED, logIn},
    Meaning{SVN_ERR_RA_SVN_NO_MECHANISMS, SCC_E_NOTAUTHORIZED, logIn},
    Meaning{SVN_ERR_AUTHZ_ROOT_UNREADABLE, SCC_E_NOTAUTHORIZED, forbidden},
    Meaning{SVN_ERR_AUTHZ_UNREADABLE, SCC_E_NOTAUTHORIZED, forbidden},
    Meaning{SVN_ERR_AUTHZ_PARTIALLY_READABLE, SCC_E_NOTAUTHORIZED, forbidden},
    Meaning{SVN_ERR_AUTHZ_UNWRITABLE, SCC_E_NOTAUTHORIZED, forbidden},
    Meaning{SVN_ERR_RA_DAV_FORBIDDEN, SCC_E_NOTAUTHORIZED, forbidden},
    Meaning{SVN_ERR_FS_NO_USER, SCC_E_NOTAUTHORIZED, logIn},
    Meaning{SVN_ERR_REPOS_HOOK_FAILURE, SCC_E_NOTAUTHORIZED, "A hook of the repository has refused it."},
    Meaning{SVN_ERR_FS_PATH_ALREADY_LOCKED, SCC_E_FILEISLOCKED, ""},
    Meaning{SVN_ERR_FS_LOCK_OWNER_MISMATCH, SCC_E_FILEISLOCKED, ""},
    Meaning{SVN_ERR_FS_BAD_LOCK_TOKEN, SCC_E_FILEISLOCKED, ""},
    Meaning{SVN_ERR_FS_NO_LOCK_TOKEN, SCC_E_FILEISLOCKED, ""},
    Meaning{SVN_ERR_CLIENT_NO_LOCK_TOKEN, SCC_E_FILEISLOCKED, ""},
    Meaning{SVN_ERR_FS_NO_SUCH_LOCK, SCC_E_NOTCHECKEDOUT, ""},
    Meaning{SVN_ERR_CLIENT_MISSING_LOCK_TOKEN, SCC_E_NOTCHECKEDOUT, ""},
    Meaning{SVN_ERR_FS_TXN_OUT_OF_DATE, SCC_E_CHECKINCONFLICT, getFirst},
    Meaning{SVN_ERR_FS_OUT_OF_DATE, SCC_E_CHECKINCONFLICT, getFirst},
    Meaning{SVN_ERR_RA_OUT_OF_DATE, SCC_E_CHECKINCONFLICT, getFirst},
    Meaning{SVN_ERR_WC_NOT_UP_TO_DATE, SCC_E_CHECKINCONFLICT, getFirst},
    Meaning{SVN_ERR_FS_CONFLICT, SCC_E_CHECKINCONFLICT, getFirst},
    Meaning{SVN_ERR_WC_FOUND_CONFLICT, SCC_E_FIXMERGE, "Resolve the conflict with \"svn resolve\"."},
    Meaning{SVN_ERR_FS_ALREADY_EXISTS, SCC_E_FILEALREADYEXISTS, ""},
    Meaning{SVN_ERR_ENTRY_EXISTS, SCC_E_FILEALREADYEXISTS, ""},
    Meaning{SVN_ERR_WC_LOCKED, SCC_E_ACCESSFAILURE, cleanUp},
    Meaning{SVN_ERR_WC_CLEANUP_REQUIRED, SCC_E_ACCESSFAILURE, cleanUp},
    Meaning{SVN_ERR_WC_NOT_LOCKED, SCC_E_ACCESSFAILURE, cleanUp},
    Meaning{SVN_ERR_SQLITE_BUSY, SCC_E_ACCESSFAILURE, cleanUp},
    Meaning{SVN_ERR_WC_UPGRADE_REQUIRED, SCC_E_NONSPECIFICERROR, newerProgram},
    Meaning{SVN_ERR_ENTRY_NOT_FOUND, SCC_E_FILENOTCONTROLLED, ""},
    Meaning{SVN_ERR_WC_PATH_NOT_FOUND, SCC_E_FILENOTCONTROLLED, ""},
    Meaning{SVN_ERR_WC_NOT_WORKING_COPY, SCC_E_FILENOTCONTROLLED, ""},
    Meaning{SVN_ERR_UNVERSIONED_RESOURCE, SCC_E_FILENOTCONTROLLED, ""},
    Meaning{SVN_ERR_FS_NOT_FOUND, SCC_E_FILENOTCONTROLLED, ""},
    Meaning{SVN_ERR_FS_PATH_SYNTAX, SCC_E_FILESYNTAXERR, ""},
    Meaning{SVN_ERR_BAD_URL, SCC_E_PROJSYNTAXERR, ""},
    Meaning{SVN_ERR_RA_ILLEGAL_URL, SCC_E_PROJSYNTAXERR, ""},
    Meaning{SVN_ERR_FS_NO_SUCH_REVISION, SCC_E_NOSPECIFIEDVERSION, ""},
    Meaning{SVN_ERR_RA_LOCAL_REPOS_NOT_FOUND, SCC_E_ACCESSFAILURE, unreachable},
    Meaning{SVN_ERR_REPOS_UNSUPPORTED_VERSION, SCC_E_ACCESSFAILURE, unreachable},
    Meaning{SVN_ERR_RA_SVN_REPOS_NOT_FOUND, SCC_E_ACCESSFAILURE, unreachable},
    Meaning{SVN_ERR_RA_SVN_CONNECTION_CLOSED, SCC_E_ACCESSFAILURE, unreachable},
    Meaning{SVN_ERR_RA_SVN_IO_ERROR, SCC_E_ACCESSFAILURE, unreachable},
    Meaning{SVN_ERR_RA_SVN_MALFORMED_DATA, SCC_E_ACCESSFAILURE, unreachable},
    Meaning{SVN_ERR_RA_SVN_BAD_VERSION, SCC_E_ACCESSFAILURE, unreachable},
    Meaning{SVN_ERR_RA_DAV_CONN_TIMEOUT, SCC_E_ACCESSFAILURE, unreachable},
    Meaning{SVN_ERR_RA_DAV_REQUEST_FAILED, SCC_E_ACCESSFAILURE, unreachable},
    Meaning{SVN_ERR_RA_UUID_MISMATCH, SCC_E_ACCESSFAILURE, unreachable},
    Meaning{SVN_ERR_RA_SESSION_URL_MISMATCH, SCC_E_ACCESSFAILURE, unreachable},
};

/// What a code of the operating system means, which are told apart by functions and not by value.
const Meaning *systemMeaning(apr_status_t code) {
    static constexpr Meaning full{0, SCC_E_ACCESSFAILURE, freeSpace};
    static constexpr Meaning denied{0, SCC_E_NOTAUTHORIZED,
                                    "Check the permissions of the file and its directory."};
    static constexpr Meaning network{0, SCC_E_ACCESSFAILURE, unreachable};
    if (APR_STATUS_IS_ENOSPC(code) || code == EDQUOT) {
        return &full;
    }
    if (APR_STATUS_IS_EACCES(code) || code == EROFS) {
        return &denied;
    }
    if (APR_STATUS_IS_ECONNREFUSED(code) || APR_STATUS_IS_ECONNRESET(code) || APR_STATUS_IS_EHOSTUNREACH(code) ||
        APR_STATUS_IS_ENETUNREACH(code) || APR_STATUS_IS_TIMEUP(code) || APR_STATUS_IS_ETIMEDOUT(code) ||
        APR_STATUS_IS_EPIPE(code)) {
        return &network;
    }
    return nullptr;
}

const Meaning *meaningOf(const svn_error_t &error) {
    for (const svn_error_t *link = &error; link != nullptr; link = link->child) {
        const auto found = std::find_if(meanings.begin(), meanings.end(),
                                        [&](const Meaning &m) { return m.code == link->apr_err; });
        if (found != meanings.end()) {
            return &*found;
        }
        if (const Meaning *system = systemMeaning(link->apr_err)) {
            return system;
        }
    }
    // Why there is no connection is what counts, if the causes say so.
    static constexpr Meaning unconnected{0, SCC_E_ACCESSFAILURE, unreachable};
    const bool isUnconnected =
        error.apr_err == SVN_ERR_RA_CANNOT_CREATE_SESSION || error.apr_err == SVN_ERR_RA_LOCAL_REPOS_OPEN_FAILED;
    return isUnconnected ? &unconnected : nullptr;
}

} // namespace

SCCRTN resultOf(const svn_error_t &error) {
    const Meaning *meaning = meaningOf(error);
    return meaning != nullptr ? meaning->result : SCC_E_NONSPECIFICERROR;
}

std::string messagesOf(const svn_error_t &error) {
    std::string text;
    for (const svn_error_t *link = &error; link != nullptr; link = link->child) {
        std::array<char, 1024> buffer{};
        const std::string_view message = svn_err_best_message(link, buffer.data(), buffer.size());
        if (!message.empty() && text.find(message) == std::string::npos) {
            text += text.empty() ? "" : "\n";
            text += message;
        }
    }
    return text;
}

void check(svn_error_t *error) {
    if (error == nullptr) {
        return;
    }
    std::string text = messagesOf(*error);
    const Meaning *meaning = meaningOf(*error);
    const SCCRTN result = meaning != nullptr ? meaning->result : SCC_E_NONSPECIFICERROR;
    if (meaning != nullptr && !meaning->hint.empty()) {
        text += "\n";
        text += meaning->hint;
    }
    svn_error_clear(error);
    throw Failure(result, std::move(text));
}

} // namespace svnscc
