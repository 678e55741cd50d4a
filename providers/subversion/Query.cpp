#include "providers/subversion/Query.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/FileState.h"
#include "providers/subversion/Paths.h"
#include "providers/subversion/StaticTraits.h"
#include "providers/subversion/StatusWalk.h"
#include "providers/subversion/UserName.h"

#include <algorithm>

namespace svnscc {

namespace {

bool applies(SCCCOMMAND command, long status) {
    const bool isControlled = (status & SCC_STATUS_CONTROLLED) != 0;
    const bool isGone = (status & SCC_STATUS_DELETED) != 0;
    switch (command) {
    case SCC_COMMAND_ADD:
        return !isControlled;
    case SCC_COMMAND_CHECKIN:
    case SCC_COMMAND_UNCHECKOUT:
        return (status & SCC_STATUS_CHECKEDOUT) != 0;
    case SCC_COMMAND_CHECKOUT:
        return isControlled && !isGone && (status & SCC_STATUS_OUTEXCLUSIVE) == 0;
    default:
        return isControlled && !isGone;
    }
}

/// Directories without those that are within others.
Names outermost(Names directories) {
    std::sort(directories.begin(), directories.end());
    Names kept;
    for (std::string &directory : directories) {
        // Between a directory and what is within it, the order may have "name.x" and the like.
        const bool isCovered = std::any_of(kept.rbegin(), kept.rend(),
                                           [&](const std::string &other) { return isWithin(other, directory); });
        if (!isCovered) {
            kept.push_back(std::move(directory));
        }
    }
    return kept;
}

/// Ends a walk for a host that wants no more names.
struct Enough {};

} // namespace

std::vector<long> statusWords(Client &client, const Names &names) {
    const std::vector<FileState> states = statesOf(client, names);
    const std::string user = userName(client);
    const StaticTraits traits = StaticTraits::ofFiles(client, names, states);
    std::vector<long> words;
    words.reserve(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        long word = statusBits(states[i], user);
        if (word != SCC_STATUS_NOTCONTROLLED) {
            word |= traits.bits(names[i], states[i]);
        }
        words.push_back(word);
    }
    return words;
}

void enumerate(Client &client, const Names &directories, const Enumeration &enumeration) {
    const std::string user = userName(client);
    const StaticTraits traits = StaticTraits::ofProject(client);
    const Names starts = outermost(directories.empty() ? Names{client.project().directory} : directories);
    try {
        for (const std::string &start : starts) {
            if (!isWithin(client.project().root, start)) {
                continue;
            }
            walk(client, start, svn_depth_infinity,
                 [&](const std::string &path, const svn_client_status_t &status) {
                     const FileState state = stateFrom(status);
                     long bits = statusBits(state, user);
                     bits |= bits != SCC_STATUS_NOTCONTROLLED ? traits.bits(path, state) : 0;
                     if (state.isDirectory || !applies(enumeration.command, bits)) {
                         return;
                     }
                     if (client.output().poll() ||
                         enumeration.callback(enumeration.data, 1, bits, path.c_str()) == 0) {
                         throw Enough();
                     }
                 });
        }
    } catch (const Enough &) {
        return;
    }
}

std::vector<long> dropUnfit(Client &client, const Names &names, const Enumeration &enumeration) {
    std::vector<long> words = statusWords(client, names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!applies(enumeration.command, words[i]) &&
            enumeration.callback(enumeration.data, 0, words[i], names[i].c_str()) == 0) {
            break;
        }
    }
    return words;
}

} // namespace svnscc
