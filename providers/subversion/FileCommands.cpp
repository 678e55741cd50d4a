// The entries for files: each takes the host's arguments apart and runs one operation.
#include "providers/subversion/Add.h"
#include "providers/subversion/CheckIn.h"
#include "providers/subversion/CheckOut.h"
#include "providers/subversion/EntryCall.h"
#include "providers/subversion/Failure.h"
#include "providers/subversion/Get.h"
#include "providers/subversion/Inspection.h"
#include "providers/subversion/Paths.h"
#include "providers/subversion/Query.h"
#include "providers/subversion/Remove.h"
#include "providers/subversion/Rename.h"
#include "providers/subversion/Text.h"
#include "providers/subversion/UndoCheckOut.h"

#include "CM/scc/scc.h"

#include <algorithm>

using namespace svnscc;

SCCRTN SccGet(void *context, HWND /*window*/, long count, char **files, long flags, void * /*options*/) {
    return runWithFiles(context, count, files, [&](Client &client, const Names &names) {
        return (flags & SCC_GET_ALL) != 0 ? getDirectories(client, names, (flags & SCC_GET_RECURSIVE) != 0)
                                          : getFiles(client, names);
    });
}

SCCRTN SccCheckout(void *context, HWND /*window*/, long count, char **files, char *comment, long /*flags*/,
                   void * /*options*/) {
    return runWithFiles(context, count, files, [&](Client &client, const Names &names) {
        return checkOut(client, names, commentText(comment));
    });
}

SCCRTN SccCheckin(void *context, HWND /*window*/, long count, char **files, char *comment, long flags,
                  void * /*options*/) {
    return runWithFiles(context, count, files, [&](Client &client, const Names &names) {
        return checkIn(client, names, commentText(comment), (flags & SCC_KEEP_CHECKEDOUT) != 0);
    });
}

SCCRTN SccUncheckout(void *context, HWND /*window*/, long count, char **files, long /*flags*/,
                     void * /*options*/) {
    return runWithFiles(context, count, files, undoCheckOut);
}

SCCRTN SccAdd(void *context, HWND /*window*/, long count, char **files, char *comment, long *flags,
              void * /*options*/) {
    return runWithFiles(context, count, files, [&](Client &client, const Names &names) {
        std::vector<long> flagOfEach(names.size(), SCC_FILETYPE_AUTO);
        if (flags != nullptr) {
            std::copy_n(flags, names.size(), flagOfEach.begin());
        }
        return addFiles(client, names, commentText(comment), flagOfEach);
    });
}

SCCRTN SccRemove(void *context, HWND /*window*/, long count, char **files, char *comment, long /*flags*/,
                 void * /*options*/) {
    return runWithFiles(context, count, files, [&](Client &client, const Names &names) {
        return removeFiles(client, names, commentText(comment));
    });
}

SCCRTN SccRename(void *context, HWND /*window*/, char *oldFile, char *newFile) {
    return runInProject(context, [&](Client &client) {
        renameFile(client, internalPath(oldFile), internalPath(newFile));
        return SCC_OK;
    });
}

SCCRTN SccHistory(void *context, HWND /*window*/, long count, char **files, long /*flags*/, void * /*options*/) {
    return runWithFiles(context, count, files, showHistory);
}

SCCRTN SccProperties(void *context, HWND /*window*/, char *file) {
    return runInProject(context, [&](Client &client) { return showProperties(client, internalPath(file)); });
}

SCCRTN SccDiff(void *context, HWND /*window*/, char *file, long /*flags*/, void * /*options*/) {
    return runInProject(context, [&](Client &client) { return compare(client, internalPath(file)); });
}

SCCRTN SccQueryInfo(void *context, long count, char **files, long *status) {
    // A failure leaves no state that the host could take for one.
    if (status != nullptr && count > 0) {
        std::fill_n(status, count, SCC_STATUS_INVALID);
    }
    return runInProject(context, [&](Client &client) -> SCCRTN {
        if (count < 0 || (count > 0 && (files == nullptr || status == nullptr))) {
            throw Failure(SCC_E_NONSPECIFICERROR, "The list of files, or the array for the states, is missing.");
        }
        Names names;
        std::vector<long> places;
        for (long i = 0; i < count; ++i) {
            try {
                names.push_back(internalPath(files[i]));
                places.push_back(i);
            } catch (const Failure &failure) {
                client.output().error(failure.text()); // the others have states all the same
            }
        }
        const std::vector<long> words = names.empty() ? std::vector<long>() : statusWords(client, names);
        for (std::size_t i = 0; i < words.size(); ++i) {
            status[places[i]] = words[i];
        }
        return SCC_OK;
    });
}

SCCRTN SccPopulateList(void *context, SCCCOMMAND command, long count, char **files, POPLISTFUNC callback,
                       void *data, long *status, long flags) {
    if (status != nullptr && count > 0) {
        std::fill_n(status, count, SCC_STATUS_INVALID);
    }
    return runInProject(context, [&](Client &client) -> SCCRTN {
        if (callback == nullptr) {
            throw Failure(SCC_E_NONSPECIFICERROR, "The callback for the names is missing.");
        }
        const Names names = namesFrom(count, files);
        const Enumeration enumeration{command, callback, data};
        const bool areDirectories = (flags & SCC_PL_DIR) != 0;
        const std::vector<long> words =
            areDirectories ? statusWords(client, names) : dropUnfit(client, names, enumeration);
        if (status != nullptr) {
            std::copy(words.begin(), words.end(), status);
        }
        enumerate(client, areDirectories ? names : Names(), enumeration);
        return SCC_OK;
    });
}
