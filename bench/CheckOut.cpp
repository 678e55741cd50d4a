// Checking out units under RCS with a lock, reloads included, against a shell loop of co over the same files.
// Every run works on a fresh copy.
#include "bench/Peer.h"
#include "bench/Project.h"
#include "bench/Works.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMMode.h"
#include "CM/CMSupport/core/CMOutputer.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace bench {

namespace {

std::vector<fs::path> unitFiles(const fs::path &projectFile) {
    const OpenProject open(projectFile);
    std::vector<fs::path> files;
    for (const IUnit *const unit : open.units()) {
        files.push_back(fs::relative(unit->getFullFileName().str(), projectFile.parent_path()));
    }
    return files;
}

void writeList(const fs::path &list, const std::vector<fs::path> &files) {
    std::ofstream out(list);
    for (const fs::path &file : files) {
        out << file.string() << '\n';
    }
}

void expectAllCheckedOut(const fs::path &directory, const std::vector<fs::path> &files) {
    for (const fs::path &file : files) {
        const auto permissions = fs::status(directory / file).permissions();
        if ((permissions & fs::perms::owner_write) == fs::perms::none) {
            throw std::runtime_error((directory / file).string() + " was not checked out");
        }
    }
}

} // namespace

bool checkOutUnits(const Setting &setting) {
    const fs::path original = setting.scratch / "rcs";
    const fs::path copy = setting.scratch / "rcs-copy";
    const fs::path list = setting.scratch / "rcs-files";
    const fs::path projectFile = makeProject(original, setting.scaled(1000), "RCS");
    const std::vector<fs::path> files = unitFiles(projectFile);
    writeList(list, files);
    const std::string inOriginal = "cd '" + original.string() + "' && ";
    runPeer({"/bin/sh", "-c",
             inOriginal +
                 "while read -r file; do mkdir -p \"${file%/*}/RCS\"; done && "
                 "xargs -d '\\n' ci -q -u -t-bench -mbench <'" +
                 list.string() + "'"},
            {.input = list.string(), .output = {}});
    const auto freshCopy = [&] {
        fs::remove_all(copy);
        runPeer({"cp", "-a", original.string(), copy.string()});
    };

    CMFacade::ATMCallbackFunc() = [](CMainFrame *) {};
    CMFacade::afterATMCallbackFunc() = [](CMainFrame *) {};
    const auto ours = [&] {
        freshCopy();
        std::ostringstream window;
        CMFacade::outStream() = &window;
        double took = 0;
        {
            const OpenProject open(copy / projectFile.filename());
            CMUnitList units = listOf(open.units());
            CMMode mode(CMMode::readWrite);
            CMLabel label("");
            CMArgumentList arguments{&mode, &label};
            CMDiagnosticList diagnostics;
            took = secondsOf([&] {
                if (CMFacade::CheckOut(units, arguments, diagnostics) != 1) {
                    throw std::runtime_error("the check out failed: " + window.str());
                }
            });
        }
        CMFacade::outStream() = nullptr;
        expectAllCheckedOut(copy, files);
        return took;
    };
    const auto peer = [&] {
        freshCopy();
        const std::string loop =
            "cd '" + copy.string() + "' && while read -r file; do co -q -l \"$file\" </dev/null || exit 1; done";
        const double took = secondsOf([&] {
            runPeer({"/bin/sh", "-c", loop}, {.input = list.string(), .output = {}});
        });
        expectAllCheckedOut(copy, files);
        return took;
    };
    const Row row =
        timedRow("check out " + std::to_string(files.size()) + " units, RCS, with reloads / loop of co",
                 measurePaired(setting.runs, ours, peer), 1.15);
    print(row);
    return row.ok();
}

} // namespace bench
