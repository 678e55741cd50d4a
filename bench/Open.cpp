// Measures opening a large model, against cat of the same files. A new process opens it each time.
#include "bench/Peer.h"
#include "bench/Project.h"
#include "bench/Resident.h"
#include "bench/Works.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace bench {

namespace {

struct Opening {
    double seconds = 0;
    double bytes = 0; ///< growth of the largest resident size
};

// Lists the files of the model, one on each line, and returns their total size.
double listFiles(const fs::path &directory, const fs::path &list) {
    std::ofstream out(list);
    double bytes = 0;
    for (const auto &entry : fs::recursive_directory_iterator(directory)) {
        if (entry.is_regular_file()) {
            out << entry.path().string() << '\n';
            bytes += static_cast<double>(entry.file_size());
        }
    }
    return bytes;
}

std::string perUnit(double bytes) {
    char text[32];
    std::snprintf(text, sizeof text, "%.0f B/unit", bytes);
    return text;
}

} // namespace

int openOnce(const std::string &projectFile) {
    const double before = largestResidentBytes();
    const double seconds = secondsOf([&] {
        // Stays open, because closing is not part of opening.
        static const OpenProject open{fs::path(projectFile)};
    });
    std::cout << seconds << ' ' << largestResidentBytes() - before << '\n';
    std::cout.flush();
    std::_Exit(0);
}

bool openModel(const Setting &setting) {
    const fs::path list = setting.scratch / "large-files";
    const fs::path answer = setting.scratch / "large-answer";
    const int units = setting.scaled(100000);
    const fs::path projectFile = largeProject(setting.scratch, units);
    const double textBytes = listFiles(projectFile.parent_path(), list);

    std::vector<double> bytes;
    const auto ours = [&] {
        runPeer({setting.self.string(), "--open-once", projectFile.string()},
                {.input = {}, .output = answer.string()});
        Opening opening;
        std::ifstream(answer) >> opening.seconds >> opening.bytes;
        bytes.push_back(opening.bytes);
        return opening.seconds;
    };
    const auto peer = [&] {
        return secondsOf([&] { runPeer({"xargs", "-d", "\\n", "cat"}, {.input = list.string(), .output = {}}); });
    };
    const std::string what = "open a model of " + std::to_string(units) + " units";
    const Row row = timedRow(what + " / cat of its files", measurePaired(setting.runs, ours, peer), 4);
    print(row);

    const double taken = median(bytes) / units;
    const double allowed = textBytes / units + 2048;
    const Row memory{what + ": memory / text and 2 KiB a unit", perUnit(taken), perUnit(allowed), taken / allowed,
                     1};
    print(memory);
    return row.ok() && memory.ok();
}

} // namespace bench
