#include "providers/subversion/StatusWalk.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/Paths.h"

#include <svn_error_codes.h>
#include <svn_wc.h>

#include <exception>
#include <string_view>
#include <unordered_map>

namespace svnscc {

namespace {

/// Carries what a receiver throws through the C functions of the walk.
struct Reception {
    const StateReceiver *receiver;
    std::exception_ptr thrown;
};

svn_error_t *receive(void *baton, const char *path, const svn_client_status_t *status, apr_pool_t * /*pool*/) {
    auto *reception = static_cast<Reception *>(baton);
    try {
        (*reception->receiver)(path, *status);
    } catch (...) {
        reception->thrown = std::current_exception();
        return svn_error_create(SVN_ERR_CANCELLED, nullptr, nullptr);
    }
    return SVN_NO_ERROR;
}

bool isVersioned(Client &client, const std::string &path) {
    svn_node_kind_t kind = svn_node_none;
    check(svn_wc_read_kind2(&kind, client.get()->wc_ctx, path.c_str(), TRUE, FALSE, client.pool()));
    return kind != svn_node_none;
}

struct Start {
    std::string path;
    svn_depth_t depth;
};

/// Where a walk over the names has to begin: at a file itself, or at the directory that they have in common.
Start startFor(Client &client, const Names &names) {
    if (names.size() == 1 && isVersioned(client, names.front())) {
        return {names.front(), svn_depth_empty};
    }
    std::string start = directoryOf(names.front());
    bool isFlat = true; // all of the names are in the one directory
    for (const std::string &name : names) {
        isFlat = isFlat && directoryOf(name) == start;
        if (!isWithin(start, name)) {
            start = commonDirectory(start, name);
        }
    }
    if (!isWithin(client.project().root, start)) {
        start = client.project().root;
    }
    while (start != client.project().root && !isVersioned(client, start)) {
        start = directoryOf(start);
        isFlat = false;
    }
    return {start, isFlat ? svn_depth_immediates : svn_depth_infinity};
}

} // namespace

void walk(Client &client, const std::string &directory, svn_depth_t depth, const StateReceiver &receiver) {
    Reception reception{&receiver, {}};
    const svn_opt_revision_t head = newest();
    const Pool pool(client.pool());
    svn_error_t *error = svn_client_status6(nullptr, client.get(), directory.c_str(), &head, depth, TRUE, TRUE,
                                            TRUE, TRUE, TRUE, TRUE, nullptr, receive, &reception, pool.get());
    if (reception.thrown) {
        svn_error_clear(error);
        std::rethrow_exception(reception.thrown);
    }
    check(error);
}

std::vector<FileState> statesOf(Client &client, const Names &names) {
    std::vector<FileState> states(names.size());
    // A name may be given twice; all of its places are chained.
    std::unordered_map<std::string_view, std::size_t> firstPlace;
    constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::vector<std::size_t> nextPlace(names.size(), none);
    Names inside;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (isWithin(client.project().root, names[i])) {
            inside.push_back(names[i]);
            const auto [place, isNew] = firstPlace.try_emplace(names[i], i);
            if (!isNew) {
                nextPlace[i] = place->second;
                place->second = i;
            }
        }
    }
    if (inside.empty()) {
        return states;
    }
    const Start start = startFor(client, inside);
    walk(client, start.path, start.depth, [&](const std::string &path, const svn_client_status_t &status) {
        const auto found = firstPlace.find(path);
        for (std::size_t i = found != firstPlace.end() ? found->second : none; i != none; i = nextPlace[i]) {
            states[i] = stateFrom(status);
        }
    });
    return states;
}

} // namespace svnscc
