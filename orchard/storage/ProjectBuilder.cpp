#include "orchard/storage/ProjectBuilder.h"

#include "CM/host/IPN.h"
#include "CM/platform/AtomicFile.h"
#include "CM/platform/Files.h"
#include "orchard/model/Paths.h"
#include "orchard/properties/PropertyTable.h"
#include "orchard/storage/DefaultHeader.h"
#include "orchard/storage/DiskStorage.h"
#include "orchard/storage/ProjectFile.h"
#include "orchard/storage/TextCheck.h"
#include "orchard/storage/UnitWriter.h"

#include <filesystem>
#include <system_error>

namespace orchard {

namespace {

constexpr std::string_view extension = ".orp";

/// Is in the units directory until the project is complete, so that a project whose making was interrupted can be
/// told from the files of somebody.
constexpr std::string_view unfinishedMark = "/.unfinished";

std::string projectPath(const std::string &path) {
    std::string full = normalPath(path, platform::currentDirectory().view());
    if (!full.ends_with(extension)) {
        full += extension;
    }
    return full;
}

} // namespace

ProjectBuilder::ProjectBuilder(const std::string &path, const std::string &tool, std::function<ElementId()> nextId)
    : file_(projectPath(path)), nextId_(std::move(nextId)) {
    const std::string name(fileOfPath(file_).substr(0, fileOfPath(file_).size() - extension.size()));
    const std::string directory(directoryOfPath(file_));
    model_ = std::make_unique<Model>(file_, directory + '/' + unitsDirectoryName(name),
                                     std::make_unique<DiskStorage>());
    UnitElement &root = model_->project();
    root.setId(nextId_());
    root.setName(name);
    root.setFileName(name + traitsOf(Kind::project).extension);
    fault_ = path.empty() || isSeparator(path.back()) ? "it is not a file name" : faultOfFileName(root.fileName());
    if (const auto odd = faultOfValue(name); fault_.empty() && odd) {
        fault_ = *odd;
    }
    if (!tool.empty()) {
        for (const CString &metaclass : {IPN::CMGeneral, IPN::General}) { // for use, and for adding to the archive
            root.makeProperties().set(IPN::CM, metaclass, IPN::CMTool, "String", tool);
        }
    }
}

ProjectBuilder::~ProjectBuilder() = default;

UnitElement &ProjectBuilder::addUnit(Element &owner, Kind kind, std::string_view name,
                                     std::string_view description, std::string_view directory) {
    UnitElement &unit = *addElement(owner, kind, name).asUnit();
    unit.setFileName(std::string(name) + traitsOf(kind).extension);
    unit.setDirectorySetting(directory);
    if (!description.empty()) {
        unit.setDescription(description);
    }
    return unit;
}

Element &ProjectBuilder::addElement(Element &owner, Kind kind, std::string_view name, std::string_view type) {
    Element &element = owner.addChild(makeElement(kind));
    element.setModel(model_.get());
    element.setId(nextId_());
    element.setName(name);
    if (!type.empty()) {
        element.setType(type);
    }
    return element;
}

UnitElement &ProjectBuilder::addEmbedded(Element &owner, std::string_view fileName, std::string_view text) {
    UnitElement &unit = *addElement(owner, Kind::embedded, fileName).asUnit();
    unit.setFileName(fileName);
    embedded_.emplace_back(&unit, text);
    return unit;
}

Element &ProjectBuilder::addFragment(Element &file, const Element &element) {
    Element &fragment = addElement(file, Kind::fragment, element.name());
    fragment.setStandsFor(element.id());
    return fragment;
}

void ProjectBuilder::setActive(const Element &component, const Element &configuration) {
    model_->activeComponent = component.id();
    model_->activeConfiguration = configuration.id();
}

std::string ProjectBuilder::refusal() const {
    if (!fault_.empty()) {
        return "'" + model_->project().name() + "' can't be the name of a project: " + fault_;
    }
    if (const std::string bad = faultOfPath(directoryOfPath(file_)); !bad.empty()) {
        return "the directory " + std::string(directoryOfPath(file_)) + " can't hold a project: " + bad;
    }
    if (const std::string bad = faultOfPath(model_->project().fullFileName()); !bad.empty()) {
        return "'" + model_->project().name() + "' can't be the name of a project here: " + bad;
    }
    if (platform::fileExists(file_)) {
        return "there is a project already: " + file_;
    }
    std::error_code error;
    const std::string &units = model_->unitsDirectory();
    const bool isLeftOver =
        std::filesystem::is_empty(units, error) || platform::fileExists(units + std::string(unfinishedMark));
    if (platform::fileExists(units) && !isLeftOver) {
        return "the directory for its units exists already: " + model_->unitsDirectory();
    }
    return {};
}

std::string ProjectBuilder::writeAll() {
    const std::string header = defaultHeaderOf(model_->project());
    std::string text;
    std::string fault;
    std::error_code error;
    visitSubtree<Element>(model_->project(), [&](Element &element) {
        const UnitElement *const unit = element.asUnit();
        if (!fault.empty() || unit == nullptr || !unit->isSaveUnit()) {
            return;
        }
        if (!unit->directorySetting().empty()) {
            std::filesystem::create_directories(unit->ownDirectory(), error);
        }
        if (writeUnit(*unit, header, text, fault)) {
            fault = platform::writeNewFile(unit->fullFileName(), text);
        }
        if (!fault.empty()) {
            fault = unit->fullFileName() + ": " + fault;
        }
    });
    for (const auto &[unit, content] : embedded_) {
        fault = fault.empty() ? platform::writeNewFile(unit->fullFileName(), content) : fault;
    }
    if (!fault.empty()) {
        return fault;
    }
    ProjectFile project;
    project.unitsDirectory = fileOfPath(model_->unitsDirectory());
    project.component = model_->activeComponent;
    project.configuration = model_->activeConfiguration;
    if (fault = platform::flushFileSystemOf(model_->unitsDirectory()); fault.empty()) {
        fault = platform::writeWholeFile(file_, project.text());
    }
    return fault.empty() ? fault : file_ + ": " + fault;
}

NewProject ProjectBuilder::write() {
    if (const std::string why = refusal(); !why.empty()) {
        return {{}, why};
    }
    std::error_code error;
    std::filesystem::remove_all(model_->unitsDirectory(), error); // what an interrupted run has left
    std::filesystem::create_directories(model_->unitsDirectory(), error);
    if (error) {
        return {{}, "the directory " + model_->unitsDirectory() + " can't be made: " + error.message()};
    }
    const std::string mark = model_->unitsDirectory() + std::string(unfinishedMark);
    std::string why = platform::writeNewFile(mark, {});
    if (why.empty()) {
        why = writeAll();
    }
    if (!why.empty()) {
        std::filesystem::remove_all(model_->unitsDirectory(), error);
        return {{}, why};
    }
    std::filesystem::remove(mark, error);
    return {file_, {}};
}

} // namespace orchard
