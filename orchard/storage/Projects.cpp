#include "orchard/storage/Projects.h"

#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"
#include "CM/platform/AtomicFile.h"
#include "CM/platform/Files.h"
#include "orchard/model/Paths.h"
#include "orchard/model/Workspace.h"
#include "orchard/storage/DiskStorage.h"
#include "orchard/storage/ModelLoader.h"
#include "orchard/storage/PartOpening.h"
#include "orchard/storage/ProjectFile.h"
#include "orchard/storage/UnitReplacement.h"

#include <algorithm>
#include <filesystem>
#include <unordered_map>
#include <unordered_set>

namespace orchard {

namespace {

constexpr std::string_view projectExtension = ".orp";
constexpr std::size_t largestProjectFile = std::size_t{16} << 20U;

std::string fullPath(std::string_view path) { return normalPath(path, platform::currentDirectory().view()); }

/// The project file for the path, or the reason why there is none.
std::string projectFileFor(const std::string &path, Problems &problems) {
    std::string full = fullPath(path);
    if (!platform::isDirectory(full)) {
        return full;
    }
    const std::vector<std::string> files = projectFilesIn(full);
    if (files.size() == 1) {
        return files.front();
    }
    problems.push_back({full, 0, 0,
                        files.empty() ? "the directory holds no project file (*.orp)"
                                      : "the directory holds " + std::to_string(files.size()) +
                                            " project files; name the one you mean"});
    return {};
}

Model *modelOf(const IProject *project) {
    const Element *const element = Element::of(project);
    return element == nullptr ? nullptr : element->model();
}

bool readProjectFile(const std::string &path, ProjectFile &project, Problems &problems) {
    FileText file;
    Fault fault;
    switch (file.read(path, largestProjectFile)) {
    case FileRead::missing:
        problems.push_back({path, 0, 0, "there is no such project file"});
        return false;
    case FileRead::failed:
        problems.push_back({path, 0, 0, file.fault});
        return false;
    case FileRead::done:
        break;
    }
    if (!project.parse(file.text, fault)) {
        problems.push_back(problemAt(path, file.text, fault));
        return false;
    }
    return true;
}

/// Reads all units into a model that is not published yet.
class Opening {
  public:
    Opening(Model &model, const ProjectFile &project, const OpenOptions &options,
            const std::unordered_set<ElementId> *only)
        : model_(model), loader_(model, options), stubs_(project.stubs.begin(), project.stubs.end()),
          states_(project.states.begin(), project.states.end()) {
        loader_.wanted = [this, only](UnitElement &unit) {
            const bool wanted = !stubs_.contains(unit.id());
            unit.set(UnitElement::stubByChoice, !wanted);
            return wanted && (only == nullptr || only->contains(unit.id()));
        };
        loader_.broken = [&options](UnitElement &unit, const Problem &problem) {
            if (options.warning) {
                options.warning(unloadedFor(unit, problem));
            }
            return true;
        };
        loader_.admit = [this](Element &element) { return admit(element); };
    }

    bool run() { return loader_.load(model_.project()); }
    void report(OpenResult &result) {
        result.problems = std::move(loader_.problems());
        result.cancelled = loader_.cancelled();
    }

  private:
    std::string admit(Element &element) {
        const Model::Clash clash = model_.enter(element);
        if (clash.sameId != nullptr) {
            const UnitElement *const holder = clash.sameId->saveUnit();
            return "the identifier " + element.id().text() + " belongs to '" + element.name() + "' and to '" +
                   clash.sameId->name() + "'" +
                   (holder == nullptr ? std::string() : " in " + holder->fullFileName());
        }
        if (clash.sameFile != nullptr) {
            return "the file " + clash.sameFile->fullFileName() + " is named by two units, '" + element.name() +
                   "' and '" + clash.sameFile->name() + "'";
        }
        if (UnitElement *const unit = states_.empty() ? nullptr : element.asUnit()) {
            const auto state = states_.find(unit->id());
            unit->setCMState(state == states_.end() ? 0 : state->second);
        }
        return {};
    }

    Model &model_;
    ModelLoader loader_;
    std::unordered_set<ElementId> stubs_;
    std::unordered_map<ElementId, long> states_;
};

void collectProblems(Replacement &replacement, Problems &problems) {
    std::ranges::move(replacement.problems, std::back_inserter(problems));
}

OpenResult openUnits(const std::string &path, const OpenOptions &options,
                     const std::unordered_set<ElementId> *only) {
    OpenResult result;
    const std::string file = projectFileFor(path, result.problems);
    if (file.empty()) {
        return result;
    }
    for (const auto &open : Workspace::instance().models()) {
        if (open->projectFile() == file) {
            if (options.activate) {
                Workspace::instance().activate(*open);
            }
            result.project = &open->projectObject();
            return result;
        }
    }
    const std::string directory(directoryOfPath(file));
    if (const std::string bad = faultOfPath(directory); !bad.empty()) {
        result.problems.push_back({file, 0, 0, "the directory of the project is refused: " + bad});
        return result;
    }
    ProjectFile project;
    if (!readProjectFile(file, project, result.problems)) {
        return result;
    }
    const std::string_view name = fileOfPath(file).substr(0, fileOfPath(file).size() - extensionOf(file).size());
    auto model =
        std::make_unique<Model>(file, directory + '/' + project.unitsDirectory, std::make_unique<DiskStorage>());
    model->activeComponent = project.component;
    model->activeConfiguration = project.configuration;
    UnitElement &root = model->project();
    root.setName(name);
    root.setFileName(std::string(name) + traitsOf(Kind::project).extension);
    if (const std::string bad = faultOfFileName(root.fileName()); !bad.empty()) {
        result.problems.push_back({file, 0, 0, "the name of the project is refused: " + bad});
        return result;
    }
    if (const std::string bad = faultOfPath(root.fullFileName()); !bad.empty()) {
        result.problems.push_back({file, 0, 0, "the path of its units is refused: " + bad});
        return result;
    }
    Opening opening(*model, project, options, only);
    const bool read = opening.run();
    opening.report(result);
    if (read) {
        result.project = &Workspace::instance().add(std::move(model), options.activate).projectObject();
    }
    return result;
}

} // namespace

OpenResult openProject(const std::string &path, const OpenOptions &options) {
    return openUnits(path, options, nullptr);
}

OpenResult openPart(const std::string &path, const std::unordered_set<ElementId> &units) {
    return openUnits(path, {}, &units);
}

std::string projectFileAt(const std::string &path) {
    Problems ignored;
    return projectFileFor(path, ignored);
}

void closeProject(IProject *project) {
    if (Model *const model = modelOf(project)) {
        Workspace::instance().close(*model);
    }
}

void closeAllProjects() {
    while (!Workspace::instance().models().empty()) {
        Workspace::instance().close(*Workspace::instance().models().back());
    }
}

void activateProject(IProject *project) {
    if (Model *const model = modelOf(project)) {
        Workspace::instance().activate(*model);
    }
}

std::vector<IProject *> openProjects() {
    std::vector<IProject *> projects;
    for (const auto &model : Workspace::instance().models()) {
        projects.push_back(&model->projectObject());
    }
    return projects;
}

Problems saveProject(IProject *project, bool everything) {
    Problems problems;
    Model *const model = modelOf(project);
    if (model == nullptr) {
        return problems;
    }
    ProjectFile file;
    file.unitsDirectory = fileOfPath(model->unitsDirectory());
    file.component = model->activeComponent;
    file.configuration = model->activeConfiguration;
    visitSubtree<Element>(model->project(), [&](Element &element) {
        UnitElement *const unit = element.asUnit();
        if (unit != nullptr && unit->cmState() != 0) {
            file.states.emplace_back(unit->id(), unit->cmState());
        }
        if (unit == nullptr || !unit->isSaveUnit()) {
            return;
        }
        if (unit->is(UnitElement::stubByChoice)) {
            file.stubs.push_back(unit->id());
        }
        const bool wanted = unit->modified() || (everything && !unit->isReadOnly());
        if (!wanted || unit->is(UnitElement::stub)) {
            return;
        }
        saveOwnFile(*unit, problems);
    });
    FileText present;
    const bool same =
        present.read(model->projectFile(), largestProjectFile) == FileRead::done && present.text == file.text();
    if (!same) {
        if (const std::string error = isWriteProtected(model->projectFile())
                                          ? std::string("it is read-only")
                                          : platform::writeWholeFile(model->projectFile(), file.text());
            !error.empty()) {
            problems.push_back({model->projectFile(), 0, 0, "the project file could not be saved: " + error});
        }
    }
    return problems;
}

void saveActiveProject() {
    Model *const model = Workspace::instance().active();
    const Problems problems = model == nullptr ? Problems() : saveProject(&model->projectObject());
    if (problems.empty()) {
        return;
    }
    LogTrace::Log log(LogTrace::Log::cm);
    std::string text = "Not everything could be saved; each file named here is as it was before.";
    constexpr std::size_t shown = 10;
    for (std::size_t at = 0; at < problems.size(); ++at) {
        const std::string message = problems[at].message();
        log.Min("orchard/storage", 0, message);
        text += at < shown ? "\n" + message : "";
    }
    if (problems.size() > shown) {
        text += "\n(and " + std::to_string(problems.size() - shown) + " more, see the log)";
    }
    notifyUser(text, messageLevelDefault);
}

std::vector<std::string> projectFilesIn(const std::string &directory) {
    std::vector<std::string> files;
    std::error_code error;
    const std::string full = fullPath(directory);
    for (std::filesystem::directory_iterator at(full, error), end; !error && at != end; at.increment(error)) {
        const std::string name = at->path().filename().string();
        if (extensionOf(name) == projectExtension && platform::isRegularFile(full + '/' + name)) {
            files.push_back(full + '/' + name);
        }
    }
    std::ranges::sort(files);
    return files;
}

std::string projectFileOf(const IProject &project) { return modelOf(&project)->projectFile(); }

Problems setUnitLoaded(IUnit &unit, bool loaded) {
    Problems problems;
    UnitElement *const element = Element::of(&unit)->asUnit();
    if (element->model() == nullptr || element->is(UnitElement::stub) == !loaded) {
        return problems;
    }
    Replacement replacement = loaded ? reread(*element) : unload(*element);
    collectProblems(replacement, problems);
    return problems;
}

} // namespace orchard
