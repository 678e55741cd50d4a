#include "orchard/change/Recovery.h"

#include "orchard/change/ChangeSteps.h"
#include "orchard/model/Paths.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/Projects.h"

#include <cstdint>
#include <optional>

namespace orchard {

namespace {

struct Unfinished {
    std::string projectFile;
    std::string file; ///< of the plan; empty if there is none
    ChangePlan plan;
    Problems problems;
};

Unfinished readPlan(const std::string &path) {
    Unfinished unfinished{projectFileAt(path), {}, {}, {}};
    const std::string file = planFileOf(unfinished.projectFile);
    if (unfinished.projectFile.empty() || !isThere(file)) {
        return unfinished;
    }
    unfinished.file = file;
    FileText text;
    if (text.read(file, SIZE_MAX) != FileRead::done) {
        unfinished.problems.push_back({file, 0, 0, text.fault});
    } else if (!unfinished.plan.parse(text.text, std::string(directoryOfPath(file)))) {
        unfinished.problems.push_back({file, 0, 0,
                                       "this is not the complete plan of a change; if the project is as it should "
                                       "be, remove the file"});
    }
    return unfinished;
}

Ending endingFor(Recover how) {
    switch (how) {
    case Recover::finish:
        return Ending::byForce;
    case Recover::undo:
        return Ending::takenBack;
    case Recover::byWhatIsThere:
        break;
    }
    return Ending::asFound;
}

} // namespace

Recovered recover(const std::string &path, Recover how) {
    Unfinished unfinished = readPlan(path);
    Recovered recovered{Recovered::Outcome::nothing, unfinished.plan.command, std::move(unfinished.problems)};
    if (unfinished.file.empty()) {
        return recovered;
    }
    recovered.outcome = Recovered::Outcome::failed;
    if (recovered.problems.empty()) {
        const Ended ended = endOnDisk(unfinished.plan, unfinished.projectFile, endingFor(how), recovered.problems);
        if (ended.isOver) {
            recovered.outcome =
                ended.decision.finish ? Recovered::Outcome::finished : Recovered::Outcome::takenBack;
        }
    }
    return recovered;
}

UnfinishedChange unfinishedChange(const std::string &path) {
    Unfinished unfinished = readPlan(path);
    const bool readable = !unfinished.file.empty() && unfinished.problems.empty();
    return {unfinished.file, unfinished.plan.command, readable && lookAt(unfinished.plan).finish,
            !unfinished.plan.toolSteps.empty(), std::move(unfinished.problems)};
}

} // namespace orchard
