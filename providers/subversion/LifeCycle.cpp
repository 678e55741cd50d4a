// The entries for contexts, projects and options.
#include "providers/subversion/EntryCall.h"
#include "providers/subversion/Failure.h"
#include "providers/subversion/Paths.h"
#include "providers/subversion/Project.h"
#include "providers/subversion/Text.h"

#include "CM/scc/scc.h"

namespace {

using namespace svnscc;

constexpr unsigned long capabilities = SCC_CAP_REMOVE | SCC_CAP_RENAME | SCC_CAP_DIFF | SCC_CAP_HISTORY |
                                       SCC_CAP_PROPERTIES | SCC_CAP_QUERYINFO | SCC_CAP_GETPROJPATH |
                                       SCC_CAP_COMMENTCHECKOUT | SCC_CAP_COMMENTCHECKIN | SCC_CAP_COMMENTADD |
                                       SCC_CAP_COMMENTREMOVE | SCC_CAP_TEXTOUT | SCC_CAP_HISTORY_MULTFILE |
                                       SCC_CAP_POPULATELIST | SCC_CAP_COMMENTPROJECT | SCC_CAP_REENTRANT;
constexpr unsigned long longestComment = 32767;

std::string textOf(const char *text) { return text != nullptr ? text : ""; }

/// The local path of a project. Throws Failure (SCC_E_INVALIDFILEPATH) for one that can't be.
std::string projectDirectory(const char *path) {
    try {
        return internalPath(path);
    } catch (const Failure &failure) {
        throw Failure(SCC_E_INVALIDFILEPATH, failure.text());
    }
}

/// The results that SccOpenProject has for a failure.
Failure openingFailure(const Failure &failure) {
    switch (failure.result()) {
    case SCC_E_NOTAUTHORIZED:
        return {SCC_E_INVALIDUSER, failure.text()};
    case SCC_E_FILENOTCONTROLLED:
        return {SCC_E_UNKNOWNPROJECT, failure.text()};
    default:
        return failure;
    }
}

/// Picks the project of a directory, and makes it if the repository has none.
SCCRTN pickProject(Context &context, char *projectName, char *localPath, int *isNew) {
    Client client(context);
    const bool mayCreate = isNew != nullptr && *isNew != 0;
    const Choice choice =
        chooseProject(client, textOf(projectName), projectDirectory(localPath), mayCreate, "Created a project");
    if (!copyInto(projectName, SCC_PRJPATH_LEN + 1, choice.url)) {
        throw Failure(SCC_E_NONSPECIFICERROR,
                      "The address of the project is longer than the API allows: " + choice.url);
    }
    if (isNew != nullptr) {
        *isNew = choice.isNew ? 1 : 0;
    }
    return SCC_OK;
}

SCCRTN openProject(Context &context, const char *projectName, const char *localPath, const char *comment,
                   long flags) {
    const std::string url = internalUrl(textOf(projectName));
    const std::string directory = projectDirectory(localPath);
    Client client(context);
    SCCRTN result = SCC_OK;
    try {
        if ((flags & SCC_OP_CREATEIFNEW) != 0) {
            result = chooseProject(client, url, directory, true, commentText(comment)).isNew ? SCC_I_PROJECTCREATED
                                                                                             : SCC_OK;
        }
        context.open(findProject(client, url, directory));
    } catch (const Failure &failure) {
        throw openingFailure(failure);
    }
    return result;
}

} // namespace

long SccGetVersion() { return SCC_VERSION_1_1; }

SCCRTN SccInitialize(void **context, HWND /*window*/, char * /*callerName*/, char *sccName, long *capabilityBits,
                     char *auxPathLabel, unsigned long *checkoutCommentLength, unsigned long *commentLength) {
    if (context == nullptr) {
        return SCC_E_INITIALIZEFAILED;
    }
    *context = createContext();
    if (*context == nullptr) {
        return SCC_E_INITIALIZEFAILED;
    }
    copyInto(sccName, SCC_NAME_LEN + 1, "Subversion");
    copyInto(auxPathLabel, SCC_AUXLABEL_LEN + 1, "");
    if (capabilityBits != nullptr) {
        *capabilityBits = static_cast<long>(capabilities);
    }
    for (unsigned long *length : {checkoutCommentLength, commentLength}) {
        if (length != nullptr) {
            *length = longestComment;
        }
    }
    return SCC_OK;
}

SCCRTN SccUninitialize(void *context) {
    releaseContext(context);
    return SCC_OK;
}

SCCRTN SccGetProjPath(void *context, HWND /*window*/, char *user, char *projectName, char *localPath,
                      char * /*auxProjectPath*/, int /*allowChangePath*/, int *isNew) {
    return runWithContext(context, [&](Context &known) {
        known.setUser(textOf(user));
        return pickProject(known, projectName, localPath, isNew);
    });
}

SCCRTN SccOpenProject(void *context, HWND /*window*/, char *user, char *projectName, char *localPath,
                      char * /*auxProjectPath*/, char *comment, LPTEXTOUTPROC textOutput, long flags) {
    return runWithContext(context, [&](Context &known) {
        if (known.hasProject()) {
            throw Failure(SCC_E_PROJECTALREADYOPEN, "A project is open already.");
        }
        known.output().setFunction(textOutput);
        known.setUser(textOf(user));
        try {
            return openProject(known, projectName, localPath, comment, flags);
        } catch (const Failure &failure) {
            known.output().error(failure.text());
            known.output().setFunction(nullptr);
            return failure.result();
        }
    });
}

SCCRTN SccCloseProject(void *context) {
    return runWithContext(context, [](Context &known) {
        const SCCRTN result = known.hasProject() ? SCC_OK : SCC_E_PROJNOTOPEN;
        known.close();
        return result;
    });
}

SCCRTN SccSetOption(void *context, long option, long value) {
    return runWithContext(context, [&](Context &known) -> SCCRTN {
        switch (option) {
        case SCC_OPT_EVENTQUEUE: // states are asked for, never announced
            return SCC_OK;
        case SCC_OPT_HASCANCELMODE:
            known.output().setCancelMode(value != SCC_OPT_HCM_NO);
            return SCC_OK;
        default:
            return SCC_E_OPNOTSUPPORTED;
        }
    });
}

SCCRTN SccGetCommandOptions(void *context, HWND /*window*/, SCCCOMMAND /*command*/, void ** /*options*/) {
    return runWithContext(context, [](Context &) -> SCCRTN { return SCC_E_OPNOTSUPPORTED; }); // no command has any
}
