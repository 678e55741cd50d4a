#include "bench/RcsCopy.h"

#include "CM/host/IUnit.h"
#include "bench/Peer.h"
#include "bench/Project.h"

#include <fstream>
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

} // namespace

RcsCopy::RcsCopy(const Setting &setting, const std::string &name)
    : original_(makeProject(setting.scratch / name, setting.scaled(1000), "RCS")),
      copy_(setting.scratch / (name + "-copy")), list_(setting.scratch / (name + "-files")),
      files_(unitFiles(original_)) {
    std::ofstream out(list_);
    for (const fs::path &file : files_) {
        out << file.string() << '\n';
    }
    out.close();
    runPeer({"/bin/sh", "-c",
             "cd '" + original_.parent_path().string() +
                 "' && while read -r file; do mkdir -p \"${file%/*}/RCS\"; done && "
                 "xargs -d '\\n' ci -q -u -t-bench -mbench <'" +
                 list_.string() + "'"},
            {.input = list_.string(), .output = {}});
}

fs::path RcsCopy::freshCopy() const {
    fs::remove_all(copy_);
    runPeer({"cp", "-a", original_.parent_path().string(), copy_.string()});
    return copy_ / original_.filename();
}

void RcsCopy::runLoop(const std::string &command) const {
    runPeer({"/bin/sh", "-c",
             "cd '" + copy_.string() + "' && while read -r file; do " + command + " </dev/null || exit 1; done"},
            {.input = list_.string(), .output = {}});
}

void RcsCopy::expectAll(Mode mode) const {
    for (const fs::path &file : files_) {
        const auto permissions = fs::status(copy_ / file).permissions();
        const bool isWritable = (permissions & fs::perms::owner_write) != fs::perms::none;
        if (isWritable != (mode == Mode::readWrite)) {
            throw std::runtime_error((copy_ / file).string() + " has not the mode that was asked for");
        }
    }
}

} // namespace bench
