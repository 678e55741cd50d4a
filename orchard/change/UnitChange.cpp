#include "orchard/change/UnitChange.h"

#include "orchard/change/Relocation.h"
#include "orchard/change/Removal.h"
#include "orchard/model/Paths.h"
#include "orchard/storage/DiskStorage.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/TextCheck.h"
#include "orchard/storage/UnitHeader.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <unordered_set>
#include <utility>

namespace orchard {

namespace {

/// Units may be nested this deep; a deeper model can't be opened again.
constexpr int deepest = 200;

/// A change that can't be made.
class Refused final : public UnitChange::Work {
  public:
    Refused(const UnitElement *unit, std::string why) : Work(nullptr) {
        problems.push_back({unit == nullptr ? std::string() : unit->fullFileName(), 0, 0, std::move(why)});
    }

  private:
    void settle(const Decision & /*decision*/, FilesBy /*by*/) override {}
};

std::unique_ptr<UnitChange::Work> refused(const UnitElement *unit, std::string why) {
    return std::make_unique<Refused>(unit, std::move(why));
}

int heightOf(const Element &root) {
    int height = 0;
    std::vector<std::pair<const Element *, int>> open{{&root, 1}};
    while (!open.empty()) {
        const auto [element, depth] = open.back();
        open.pop_back();
        height = std::max(height, depth);
        for (const auto &child : element->children()) {
            if (child->asUnit() != nullptr) {
                open.emplace_back(child.get(), depth + 1);
            }
        }
    }
    return height;
}

int depthOf(const Element &element) {
    int depth = 0;
    for (const Element *at = element.owner(); at != nullptr; at = at->owner()) {
        ++depth;
    }
    return depth;
}

std::string faultOfNewName(const UnitElement &unit, std::string_view name) {
    if (unit.kind() == Kind::project) {
        return "its name comes from the project file";
    }
    if (unit.is(UnitElement::stub)) {
        return "it isn't loaded";
    }
    if (name.empty() || name == "." || name == ".." || hasSeparator(name)) {
        return "a name must not be empty, \".\" or \"..\", or contain a path separator";
    }
    if (const auto fault = faultOfValue(name)) {
        return *fault;
    }
    return name == unit.name() ? "it already has this name" : "";
}

struct Look {
    UnitElement *other = nullptr;
    bool complete = true; ///< everything there was examined
};

/// Finds a unit with a file in the directory, other than `root` and the units below it.
Look lookInto(const UnitElement &root, const std::string &directory) {
    const FileIndex &index = root.model()->files();
    std::error_code error;
    std::filesystem::recursive_directory_iterator at(directory, error);
    for (const std::filesystem::recursive_directory_iterator end; !error && at != end; at.increment(error)) {
        UnitElement *const unit = index.byPath(at->path().native());
        if (unit != nullptr && unit != &root && !root.owns(*unit)) {
            return {unit, true};
        }
    }
    return {nullptr, !error || !std::filesystem::exists(directory, error)};
}

/// A directory that other units use keeps its name.
std::string directoryAfterRename(const UnitElement &unit, std::string_view name) {
    const std::string &directory = unit.directorySetting();
    if (directory.empty() || fileOfPath(directory) != unit.name() || !isDirectoryOf(unit, unit.ownDirectory())) {
        return directory;
    }
    return directory.substr(0, directory.size() - unit.name().size()) + std::string(name);
}

} // namespace

void UnitChange::Work::refuse(const UnitElement &unit, std::string why) {
    problems.push_back({unit.fullFileName(), 0, 0, "'" + unit.name() + "': " + std::move(why)});
}

void UnitChange::Work::addText(UnitElement &unit, const Intention &intention, ChangePlan::Path path, bool own) {
    FileText present;
    ChangePlan::Text text{std::move(path), own, {}, {}, {}};
    if (present.read(text.from) == FileRead::done) {
        text.before = std::move(present.text);
    }
    std::string fault;
    if (!writeUnit(unit, headerToWrite(unit, text.before), intention, text.after, text.cuts, fault)) {
        refuse(unit, std::move(fault));
        return;
    }
    if (!plan_.removes) {
        text.after = text.with({true});
        text.cuts.clear();
    }
    plan_.texts.push_back(std::move(text));
    written_.push_back(&unit);
}

Problems UnitChange::Work::begin(FilesBy by, std::string_view command) {
    if (phase_ != Phase::planned || !problems.empty()) {
        return {};
    }
    plan_.command = command;
    for (const FileChange &file : by == FilesBy::tool ? files : std::vector<FileChange>()) {
        plan_.toolSteps.push_back({file.from, file.to});
    }
    if (std::string error = beginOnDisk(plan_, model_->projectFile()); !error.empty()) {
        problems.push_back({planFileOf(model_->projectFile()), 0, 0, std::move(error)});
        return problems;
    }
    phase_ = Phase::begun;
    apply();
    return {};
}

Problems UnitChange::Work::finish(FilesBy by) {
    if (!problems.empty() || phase_ == Phase::over) {
        return {};
    }
    Problems told = begin(by, {});
    if (!told.empty()) {
        return told;
    }
    phase_ = Phase::over;
    const Ended ended =
        endOnDisk(plan_, model_->projectFile(), by == FilesBy::tool ? Ending::afterTool : Ending::byHost, told);
    isOpen = !ended.isOver;
    complete = !isOpen && !ended.isIncomplete;
    if (!ended.decision.finish) {
        revert();
        return told;
    }
    stands = std::ranges::find(ended.decision.parts, false) == ended.decision.parts.end();
    settle(ended.decision, by);
    if (ended.isOver) {
        noteTexts(ended.decision);
    }
    return told;
}

std::vector<FileChange> UnitChange::Work::halfWay() const {
    std::vector<FileChange> changes;
    for (const ChangePlan::Path &path :
         phase_ == Phase::begun ? halfWayIn(plan_) : std::vector<ChangePlan::Path>()) {
        changes.push_back({files.front().unit, path.from, path.to});
    }
    return changes;
}

/// Notes which units are saved.
void UnitChange::Work::noteTexts(const Decision &decision) {
    FileText present;
    for (std::size_t at = 0; at < written_.size(); ++at) {
        const std::uint64_t hash = bodyHashOf(plan_.texts[at].with(decision.parts));
        if (complete || (present.read(plan_.texts[at].to) == FileRead::done && bodyHashOf(present.text) == hash)) {
            written_[at]->setBodyHash(hash);
            written_[at]->noteSaved();
        }
    }
}

void UnitChange::Work::cancel() {
    if (std::exchange(phase_, Phase::over) != Phase::begun) {
        return;
    }
    Problems ignored; // what can't be taken back stays in the plan
    isOpen = !endOnDisk(plan_, model_->projectFile(), Ending::takenBack, ignored).isOver;
    revert();
}

bool isDirectoryOf(const UnitElement &root, const std::string &directory) {
    const Look found = lookInto(root, directory);
    return found.complete && found.other == nullptr;
}

FileChange fileChangeOf(UnitElement &unit, std::string from, std::string to) {
    FileChange change{&unit.unit(), std::move(from), std::move(to)};
    if (!unit.directorySetting().empty()) {
        UnitElement *const other = lookInto(unit, std::string(directoryOfPath(change.from))).other;
        change.sharedWith = other == nullptr ? nullptr : &other->unit();
    }
    return change;
}

std::vector<UnitElement *> outermost(const std::vector<IUnit *> &units) {
    std::unordered_set<const Element *> given;
    for (const IUnit *const unit : units) {
        given.insert(Element::of(unit));
    }
    std::unordered_set<const Element *> taken;
    std::vector<UnitElement *> outer;
    for (IUnit *const unit : units) {
        const Element *const element = Element::of(unit);
        const Element *above = element == nullptr ? nullptr : element->owner();
        while (above != nullptr && !given.contains(above)) {
            above = above->owner();
        }
        // Each unit once, in the order of the list.
        if (element != nullptr && above == nullptr && taken.insert(element).second) {
            outer.push_back(Element::of(unit)->asUnit());
        }
    }
    return outer;
}

namespace {

std::unique_ptr<UnitChange::Work> planRename(IUnit &object, std::string_view name) {
    UnitElement &unit = *Element::of(&object)->asUnit();
    if (unit.model() == nullptr) {
        return refused(nullptr, "the unit is not in a project");
    }
    Relocation::Target target{&unit, std::string(name), unit.fileName(), unit.directorySetting()};
    if (unit.kind() == Kind::embedded && extensionOf(name).empty()) {
        target.name += extensionOf(unit.fileName());
    }
    std::string fault = faultOfNewName(unit, target.name);
    const std::string_view extension = extensionOf(unit.fileName());
    if (unit.kind() == Kind::embedded) {
        target.fileName = target.name;
    } else if (unit.hasFile() && unit.fileName() == unit.name() + std::string(extension)) {
        target.fileName = target.name + std::string(extension);
        target.directory = directoryAfterRename(unit, target.name);
    }
    if (fault.empty() && unit.hasFile()) {
        fault = faultOfFileName(target.fileName);
        if (fault.empty() && target.fileName != unit.fileName()) {
            fault = faultOfPath(unit.ownDirectory() + '/' + target.fileName);
        }
    }
    if (fault.empty() && unit.kind() != Kind::embedded) {
        fault = faultOfSaving(*unit.saveUnit());
    }
    if (!fault.empty()) {
        return refused(&unit, "'" + unit.name() + "' can't be renamed to '" + target.name + "': " + fault);
    }
    return std::make_unique<Relocation>(*unit.model(), std::vector{std::move(target)}, nullptr);
}

std::unique_ptr<UnitChange::Work> planRenameOfFile(IUnit &object, std::string_view fileName) {
    UnitElement &unit = *Element::of(&object)->asUnit();
    if (unit.model() == nullptr || unit.owner() == nullptr || !unit.hasFile()) {
        return refused(&unit, "'" + unit.name() + "' has no file that could be renamed");
    }
    std::string fault = faultOfFileName(fileName);
    if (fault.empty()) {
        fault = faultOfPath(unit.ownDirectory().append(1, '/').append(fileName));
    }
    if (!fault.empty()) {
        return refused(&unit, "the file can't be renamed to '" + std::string(fileName) + "': " + fault);
    }
    return std::make_unique<Relocation>(
        *unit.model(),
        std::vector{Relocation::Target{&unit, unit.name(), std::string(fileName), unit.directorySetting()}},
        nullptr);
}

std::unique_ptr<UnitChange::Work> planMove(const std::vector<IUnit *> &units, IUnit &newOwner) {
    UnitElement &owner = *Element::of(&newOwner)->asUnit();
    std::vector<Relocation::Target> targets;
    for (UnitElement *const unit : outermost(units)) {
        const auto refuse = [&](const std::string &why) {
            return refused(unit, "'" + unit->name() + "' can't be moved to '" + owner.name() + "': " + why);
        };
        if (unit->model() == nullptr || unit->model() != owner.model()) {
            return refuse("they are not in the same project");
        }
        if (unit->owner() == nullptr) {
            return refuse("it is the project itself");
        }
        if (unit == &owner || unit->owns(owner)) {
            return refuse("a unit can't contain itself");
        }
        if (!mayHold(owner.kind(), unit->kind())) {
            return refuse("a " + std::string(traitsOf(unit->kind()).tag) + " can't be in a " +
                          std::string(traitsOf(owner.kind()).tag));
        }
        if (depthOf(owner) + heightOf(*unit) > deepest) {
            return refuse("units would be nested more than " + std::to_string(deepest) + " levels deep");
        }
        if (unit->owner() != &owner) {
            targets.push_back({unit, unit->name(), unit->fileName(), unit->directorySetting()});
        }
    }
    if (targets.empty()) {
        return refused(&owner, "there is nothing to move: every unit given is already in '" + owner.name() + "'");
    }
    return std::make_unique<Relocation>(*owner.model(), std::move(targets), &owner);
}

std::unique_ptr<UnitChange::Work> planRemoval(const std::vector<IUnit *> &units) {
    std::vector<UnitElement *> tops = outermost(units);
    for (const UnitElement *const unit : tops) {
        if (unit->model() == nullptr || unit->model() != tops.front()->model()) {
            return refused(unit, "'" + unit->name() + "' can't be removed: the units are not in the same project");
        }
        if (unit->owner() == nullptr) {
            return refused(unit, "'" + unit->name() + "' can't be removed: it is the project itself");
        }
    }
    if (tops.empty()) {
        return refused(nullptr, "there is nothing to remove");
    }
    Model &model = *tops.front()->model();
    return std::make_unique<Removal>(model, std::move(tops));
}

} // namespace

UnitChange UnitChange::rename(IUnit &unit, std::string_view name) { return UnitChange(planRename(unit, name)); }
UnitChange UnitChange::renameFile(IUnit &unit, std::string_view fileName) {
    return UnitChange(planRenameOfFile(unit, fileName));
}
UnitChange UnitChange::move(const std::vector<IUnit *> &units, IUnit &newOwner) {
    return UnitChange(planMove(units, newOwner));
}
UnitChange UnitChange::remove(const std::vector<IUnit *> &units) { return UnitChange(planRemoval(units)); }

UnitChange::UnitChange(std::unique_ptr<Work> work) : work_(std::move(work)) {}
UnitChange::UnitChange(UnitChange &&other) noexcept = default;
UnitChange &UnitChange::operator=(UnitChange &&other) noexcept = default;
UnitChange::~UnitChange() = default;

const Problems &UnitChange::problems() const { return work_->problems; }
const std::vector<FileChange> &UnitChange::files() const { return work_->files; }
const std::vector<OwnerChange> &UnitChange::owners() const { return work_->owners; }
const std::vector<IUnit *> &UnitChange::units() const { return work_->units; }
const std::string &UnitChange::oldPath() const { return work_->oldPath; }
const std::string &UnitChange::newPath() const { return work_->newPath; }
bool UnitChange::stands() const { return work_->stands; }
bool UnitChange::isComplete() const { return work_->complete; }
bool UnitChange::isOpen() const { return work_->isOpen; }

Problems UnitChange::begin(FilesBy by, std::string_view command) { return work_->begin(by, command); }
std::vector<FileChange> UnitChange::halfWay() const { return work_->halfWay(); }
void UnitChange::cancel() { work_->cancel(); }
Problems UnitChange::finish(FilesBy by) { return work_->finish(by); }

} // namespace orchard
