#include "orchard/change/ChangeSteps.h"

#include "CM/platform/AtomicFile.h"
#include "CM/platform/Files.h"
#include "orchard/model/Paths.h"
#include "orchard/storage/DiskStorage.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/UnitHeader.h"
#include "orchard/storage/UnitWriter.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace orchard {

bool isThere(const std::string &path) {
    struct stat state {};
    return ::lstat(path.c_str(), &state) == 0;
}

int moveWithoutReplacing(const std::string &from, const std::string &to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno == EINVAL || errno == ENOSYS) { // not every file system supports it
        if (isThere(to)) {
            return EEXIST;
        }
        if (std::rename(from.c_str(), to.c_str()) == 0) {
            return 0;
        }
    }
    if (errno == EXDEV && platform::isRegularFile(from)) {
        return platform::copyFile(from, to, true) && platform::deleteFile(from) ? 0 : errno;
    }
    return errno;
}

namespace {

bool isCopy(const std::string &one, const std::string &other) {
    FileText left;
    FileText right;
    return left.read(one) == FileRead::done && right.read(other) == FileRead::done &&
           bodyHashOf(left.text) == bodyHashOf(right.text);
}

/// The files of a plan, where they are found, and the steps that bring them further.
class Steps {
  public:
    Steps(const ChangePlan &plan, bool byTool) : plan_(plan), byTool_(byTool) {
        for (const ChangePlan::File &file : plan.files) {
            places_.push_back(find(file));
        }
    }

    [[nodiscard]] Findings findings(bool goesOn) const;
    /// Whether something can't become as the plan wants it, so that there is no use in trying again.
    [[nodiscard]] bool isIncomplete() const { return isIncomplete_ || (!plan_.removes && has(Found::nowhere)); }
    [[nodiscard]] bool hasRemoved() const { return hasRemoved_; }
    [[nodiscard]] bool hasWritten() const { return hasWritten_; }
    void tell(const Decision &decision, Problems &told) const;
    [[nodiscard]] std::vector<ChangePlan::Path> halfWay() const;
    [[nodiscard]] bool finish(const Decision &decision, Problems &told);
    [[nodiscard]] bool takeBack(bool withTexts, Problems &told);

  private:
    struct Place {
        Found found;
        std::string at; ///< empty if it is nowhere
    };
    [[nodiscard]] Place find(const ChangePlan::File &file) const;
    [[nodiscard]] bool has(Found found) const {
        return std::ranges::any_of(places_, [found](const Place &place) { return place.found == found; });
    }
    void tellOfPart(std::size_t part, bool finish, Problems &told) const;
    void moveDirectory(std::size_t index, bool back, Problems &told);
    [[nodiscard]] bool moveFiles(bool back, Problems &told);
    [[nodiscard]] bool write(const ChangePlan::Text &text, const std::vector<bool> &parts, bool back,
                             Problems &told);
    [[nodiscard]] bool removeFiles(const std::vector<bool> &parts, Problems &told);

    const ChangePlan &plan_;
    const bool byTool_;         ///< whether a tool takes part
    std::vector<Place> places_; ///< of the files of the plan
    bool isIncomplete_ = false;
    bool hasWritten_ = false;
    bool hasRemoved_ = false;
};

Steps::Place Steps::find(const ChangePlan::File &file) const {
    Place place{Found::nowhere, {}};
    const auto look = [&place](Found found, const std::string &path) {
        if (place.found == Found::nowhere && isThere(path)) {
            place = {found, path};
        }
    };
    look(Found::oldPlace, file.from);
    if (file.directory) {
        const ChangePlan::Path &directory = plan_.directories[*file.directory];
        const std::string renamed = directory.from + file.to.substr(directory.to.size());
        const std::string carried = directory.to + file.from.substr(directory.from.size());
        look(renamed == file.from ? Found::oldPlace : Found::renamed, renamed);
        look(carried == file.to ? Found::newPlace : Found::carried, carried);
    }
    if (plan_.removes || place.at == file.to || !isThere(file.to)) {
        return place;
    }
    if (place.found == Found::nowhere) {
        return {Found::newPlace, file.to};
    }
    return {isCopy(place.at, file.to) ? Found::both : Found::blocked, place.at};
}

Findings Steps::findings(bool goesOn) const {
    Findings findings;
    findings.removes = plan_.removes;
    findings.byTool = byTool_;
    findings.goesOn = goesOn;
    findings.parts = plan_.parts;
    for (std::size_t at = 0; at < places_.size(); ++at) {
        findings.files.push_back({places_[at].found, plan_.files[at].part});
    }
    FileText present;
    findings.textWritten =
        plan_.removes && std::ranges::any_of(plan_.texts, [&](const ChangePlan::Text &text) {
            return present.read(text.to) == FileRead::done && bodyHashOf(present.text) != bodyHashOf(text.before);
        });
    return findings;
}

void Steps::tellOfPart(std::size_t part, bool finish, Problems &told) const {
    for (std::size_t at = 0; at < places_.size(); ++at) {
        if (plan_.files[at].part == part && places_[at].found == Found::oldPlace) {
            told.push_back({places_[at].at, 0, 0,
                            finish ? "the CM tool has left the file behind; it was removed without the tool"
                                   : "the CM tool has not removed the file; its unit stays in the model"});
            return; // one file speaks for the part
        }
    }
}

/// Adds what is not as the plan wants it.
void Steps::tell(const Decision &decision, Problems &told) const {
    for (std::size_t part = 0; plan_.removes && byTool_ && part < plan_.parts; ++part) {
        tellOfPart(part, decision.finish && decision.parts[part], told);
    }
    bool left = false;
    for (std::size_t at = 0; !plan_.removes && at < places_.size(); ++at) {
        const auto &[found, place] = places_[at];
        const ChangePlan::File &file = plan_.files[at];
        if (found == Found::nowhere) {
            told.push_back({file.from, 0, 0,
                            std::string("the file is neither here nor at ") + file.to + ": " +
                                (byTool_ ? "the CM tool" : "another program") +
                                " has moved it elsewhere or removed it"});
        } else if (found == Found::blocked || (found == Found::both && !decision.finish)) {
            told.push_back({file.to, 0, 0, "this file is in the way; the unit's file is still " + file.from});
        } else if (found == Found::both) {
            told.push_back({file.from, 0, 0, "the file still exists, but the unit now uses " + file.to});
        } else if (byTool_ && found != Found::newPlace && !decision.finish && !std::exchange(left, true)) {
            told.push_back(
                {place, 0, 0, "the CM tool has not moved the file to " + file.to + "; the model is unchanged"});
        }
    }
}

std::vector<ChangePlan::Path> Steps::halfWay() const {
    const bool finish = decide(findings(false)).finish;
    std::vector<ChangePlan::Path> paths;
    for (std::size_t at = 0; at < places_.size(); ++at) {
        const auto &[found, place] = places_[at];
        if (found == Found::renamed && !finish) {
            paths.push_back({place, plan_.files[at].from});
        } else if (found == Found::carried) {
            paths.push_back({place, plan_.files[at].to});
        }
    }
    return paths;
}

/// Moves a directory with everything in it, also what belongs to no unit, if all of its files go along.
void Steps::moveDirectory(std::size_t index, bool back, Problems &told) {
    const std::string &from = back ? plan_.directories[index].to : plan_.directories[index].from;
    const std::string &to = back ? plan_.directories[index].from : plan_.directories[index].to;
    std::vector<Place *> inside;
    for (std::size_t at = 0; at < places_.size(); ++at) {
        if (plan_.files[at].directory != index || places_[at].found == Found::nowhere) {
            continue;
        }
        if (!liesIn(places_[at].at, from)) {
            return;
        }
        inside.push_back(&places_[at]);
    }
    // A CM tool may have created the directory without moving anything into it.
    static_cast<void>(::rmdir(to.c_str()));
    if (moveWithoutReplacing(from, to) == 0) {
        for (Place *const place : inside) {
            place->at = to + place->at.substr(from.size());
        }
        if (byTool_ && !back) {
            told.push_back(
                {from, 0, 0,
                 "the CM tool has left the directory behind; it was moved to " + to + " without the tool"});
        }
    }
}

bool Steps::moveFiles(bool back, Problems &told) {
    for (std::size_t index = 0; index < plan_.directories.size(); ++index) {
        moveDirectory(index, back, told);
    }
    bool all = true;
    for (std::size_t at = 0; at < places_.size(); ++at) {
        auto &[found, place] = places_[at];
        const std::string &to = back ? plan_.files[at].from : plan_.files[at].to;
        if (found == Found::both || found == Found::blocked || found == Found::nowhere || place == to) {
            all = all && (back || found != Found::blocked);
            continue;
        }
        std::error_code ignored; // if this fails, the move reports it
        std::filesystem::create_directories(directoryOfPath(to), ignored);
        if (const int error = moveWithoutReplacing(place, to); error != 0) {
            told.push_back({place, 0, 0,
                            std::string("the file can't be moved ") + (back ? "back to " : "to ") + to + ": " +
                                std::strerror(error)});
            all = false;
            continue;
        }
        if (byTool_ && !back) {
            told.push_back({place, 0, 0,
                            "the CM tool has left the file behind; it was moved to " + to + " without the tool"});
        }
        place = to;
    }
    return all;
}

/// Writes a text, or with `back` the one before the change, unless it is there already. Keeps the header that the
/// file has now, since the tool may have written it.
bool Steps::write(const ChangePlan::Text &text, const std::vector<bool> &parts, bool back, Problems &told) {
    const std::string &path = back && isThere(text.from) ? text.from : text.to;
    const std::string wanted = back ? text.before : text.with(parts);
    const auto succeeds = [&](const std::string &error) {
        if (!error.empty()) {
            told.push_back({path, 0, 0, "the unit's file could not be saved: " + error});
        }
        return error.empty();
    };
    FileText present;
    const FileRead read = present.read(path);
    if (read == FileRead::missing && text.before.empty()) {
        return wanted.empty() || succeeds(platform::writeWholeFile(path, wanted));
    }
    if (read != FileRead::done) {
        // A lost file is not written again: the new one would hide that it is elsewhere.
        return (read == FileRead::missing && (text.own || back)) || succeeds(present.fault);
    }
    const auto hash = bodyHashOf(present.text);
    if (hash == bodyHashOf(wanted)) {
        return true;
    }
    if (hash != bodyHashOf(text.before) && hash != bodyHashOf(text.with(parts))) {
        return succeeds("another program has changed it");
    }
    if (wanted.empty()) {
        return succeeds(::unlink(path.c_str()) == 0 ? "" : std::strerror(errno));
    }
    if (isWriteProtected(path)) {
        isIncomplete_ = isIncomplete_ || text.own;
        return succeeds("the file is read-only") || (text.own && !back); // its next save writes it
    }
    return succeeds(platform::writeWholeFile(path, withHeaderOf(present.text, wanted)));
}

bool Steps::removeFiles(const std::vector<bool> &parts, Problems &told) {
    bool all = true;
    for (const ChangePlan::File &file : plan_.files) {
        if (!parts[file.part]) {
            continue;
        }
        if (::unlink(file.from.c_str()) == 0) {
            hasRemoved_ = true;
        } else if (errno != ENOENT && errno != ENOTDIR) {
            told.push_back({file.from, 0, 0, std::string("the file can't be removed: ") + std::strerror(errno)});
            all = false;
        }
    }
    return all;
}

void removeEmpty(const std::vector<std::string> &directories) {
    for (auto directory = directories.rbegin(); directory != directories.rend(); ++directory) {
        static_cast<void>(::rmdir(directory->c_str())); // fails if something is in it
    }
}

bool Steps::finish(const Decision &decision, Problems &told) {
    if (!plan_.removes && !moveFiles(false, told)) {
        return false;
    }
    for (const ChangePlan::Text &text : plan_.texts) {
        hasWritten_ = true;
        if (!write(text, decision.parts, false, told)) {
            return false;
        }
    }
    if (plan_.removes && !removeFiles(decision.parts, told)) {
        return false;
    }
    removeEmpty(plan_.removes ? plan_.mayBeEmpty : std::vector<std::string>());
    return true;
}

bool Steps::takeBack(bool withTexts, Problems &told) {
    const std::vector<bool> parts(plan_.parts, true);
    for (auto text = plan_.texts.rbegin(); withTexts && text != plan_.texts.rend(); ++text) {
        if (!write(*text, parts, true, told)) {
            return false;
        }
    }
    if (plan_.removes) {
        return true;
    }
    const bool all = moveFiles(true, told);
    for (const ChangePlan::Path &directory : plan_.directories) {
        static_cast<void>(::rmdir(directory.to.c_str()));
    }
    removeEmpty(plan_.mayBeEmpty);
    return all;
}

} // namespace

std::string planFileOf(const std::string &projectFile) { return projectFile + ".change"; }

std::string beginOnDisk(const ChangePlan &plan, const std::string &projectFile) {
    const std::string file = planFileOf(projectFile);
    if (isThere(file)) {
        return "an earlier change of the project is not finished; finish it or take it back first";
    }
    if (std::string error = platform::writeWholeFile(file, plan.text(std::string(directoryOfPath(file))));
        !error.empty()) {
        return "the plan of the change can't be written: " + error;
    }
    for (const std::string &directory : plan.removes ? std::vector<std::string>() : plan.mayBeEmpty) {
        static_cast<void>(::mkdir(directory.c_str(), 0777)); // if this fails, the move into it reports it
    }
    return {};
}

std::vector<ChangePlan::Path> halfWayIn(const ChangePlan &plan) { return Steps(plan, true).halfWay(); }

Decision lookAt(const ChangePlan &plan) { return decide(Steps(plan, !plan.toolSteps.empty()).findings(false)); }

Ended endOnDisk(const ChangePlan &plan, const std::string &projectFile, Ending ending, Problems &told) {
    const bool goesBack = ending == Ending::takenBack;
    const bool goesOn = ending == Ending::byHost || ending == Ending::byForce;
    const bool byTool = ending == Ending::afterTool || (!goesOn && !plan.toolSteps.empty());
    Steps steps(plan, byTool);
    Ended ended{decide(steps.findings(goesOn)), false, false};
    Decision &decision = ended.decision;
    if (goesBack && decision.begun && (byTool || plan.removes)) {
        told.push_back({planFileOf(projectFile), 0, 0,
                        plan.removes ? "files are removed already; the change can only be finished"
                                     : "the CM tool has moved files already; the change can only be finished"});
        return ended;
    }
    decision.finish = decision.finish && !goesBack;
    if (!goesBack) {
        steps.tell(decision, told);
    }
    if (decision.finish) {
        ended.isOver = steps.finish(decision, told);
        decision.begun = decision.begun || steps.hasRemoved();
        decision.finish = ended.isOver || decision.begun || ending == Ending::byForce;
    }
    ended.isIncomplete = steps.isIncomplete();
    if (!decision.finish) {
        ended.isOver = Steps(plan, byTool).takeBack(goesBack || steps.hasWritten(), told);
    }
    if (ended.isOver && ::unlink(planFileOf(projectFile).c_str()) != 0 && errno != ENOENT) {
        told.push_back(
            {planFileOf(projectFile), 0, 0, std::string("the plan can't be removed: ") + std::strerror(errno)});
        ended.isOver = false;
    }
    return ended;
}

} // namespace orchard
