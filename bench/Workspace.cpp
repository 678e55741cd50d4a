// Measures listing the workspace with orchard-cm, from program start to end, against svn status of the same files.
#include "bench/Peer.h"
#include "bench/Project.h"
#include "bench/Works.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace bench {

namespace {

/// Creates a clean working copy that contains the project, with all files tracked.
fs::path trackedProject(const fs::path &directory, int units) {
    const fs::path made = makeProject(directory / "made", units, "Subversion");
    const std::string commands = "cd '" + directory.string() + "' && svnadmin create archive" +
                                 " && svn checkout -q \"file://$PWD/archive\" work && mv made/* work/ && cd work" +
                                 " && svn add -q --force . && svn commit -q -m bench";
    runPeer({"/bin/sh", "-c", commands});
    return directory / "work" / made.filename();
}

std::size_t linesOf(const fs::path &file) {
    std::ifstream stream(file);
    std::size_t lines = 0;
    for (std::string line; std::getline(stream, line);) {
        ++lines;
    }
    return lines;
}

void expectLines(const fs::path &file, std::size_t least) {
    if (linesOf(file) < least) {
        throw std::runtime_error(file.string() + " lists less than was asked for");
    }
}

} // namespace

bool listWorkspace(const Setting &setting) {
    const int units = setting.scaled(100'000);
    const fs::path directory = setting.scratch / "list";
    const fs::path projectFile = trackedProject(directory, units);
    const fs::path ourList = directory / "ours";
    const fs::path peerList = directory / "peer";
    const std::string program = (setting.self.parent_path() / "orchard-cm").string();
    const fs::path cache = directory / "cache";
    ::setenv("XDG_CACHE_HOME", cache.c_str(), 1); // keeps the user's own cache out of the run
    const auto ours = [&] {
        return secondsOf([&] {
            runPeer({program, "-p", projectFile.string(), "list"}, {.input = {}, .output = ourList.string()});
        });
    };
    const auto oursAnew = [&] {
        fs::remove_all(cache);
        return ours();
    };
    const auto peer = [&] {
        return secondsOf([&] {
            runPeer({"svn", "status", "-v", projectFile.parent_path().string()},
                    {.input = {}, .output = peerList.string()});
        });
    };
    // Both know the files already: Subversion from its database, the program from the record of its last list.
    const std::string what = "list " + std::to_string(units) + " units, orchard-cm";
    ours();
    const Row again = timedRow(what + " / svn status -v", measurePaired(setting.runs, ours, peer), 1.5);
    const Row anew =
        timedRow(what + " for the first time / svn status -v", measurePaired(setting.runs, oursAnew, peer), 5);
    expectLines(ourList, static_cast<std::size_t>(units));
    expectLines(peerList, static_cast<std::size_t>(units));
    print(again);
    print(anew);
    return again.ok() && anew.ok();
}

} // namespace bench
