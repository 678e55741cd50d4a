#include "tests/support/recording_host/RecordingHost.h"

#include "CM/host/IPN.h"
#include "CM/host/Utilities.h"

#include <algorithm>
#include <new>
#include <stdexcept>

using namespace recording;

namespace {

RecordingHost *theHost = nullptr;

void resetFlags() {
    isOk2All = false;
    reloadForDupId = false;
}

} // namespace

RecordingHost::RecordingHost() {
    if (theHost != nullptr) {
        throw std::logic_error("one recording host at a time");
    }
    theHost = this;
    resetFlags();
}

RecordingHost::~RecordingHost() {
    resetFlags();
    theHost = nullptr;
}

RecordingHost &RecordingHost::current() {
    if (theHost == nullptr) {
        throw std::logic_error("no recording host lives");
    }
    return *theHost;
}

std::vector<std::string> RecordingHost::callsOf(std::string_view prefix) const {
    std::vector<std::string> found;
    std::ranges::copy_if(calls, std::back_inserter(found),
                         [prefix](const std::string &call) { return call.starts_with(prefix); });
    return found;
}

void RecordingHost::clearRecords() {
    calls.clear();
    lookups.clear();
    logLines.clear();
    messages.shown.clear();
    worker.commands.clear();
    places.settingsRead.clear();
    model.filesAskedFor.clear();
}

template <class KIND> KIND &RecordingHost::make(const CString &name, const CString &metaClass, IDObject *owner) {
    KIND &object = *new (storage.take(sizeof(KIND))) KIND;
    objects_.emplace(&object, std::unique_ptr<IDObject, EndsObject>(&object, {&storage}));
    object.name = name;
    object.metaClassName = metaClass;
    object.id = "GUID " + std::to_string(++lastId_);
    object.owner = owner == nullptr && model.activeProject != nullptr ? model.activeProject : owner;
    if (object.owner != nullptr) {
        ObjectState::of(object.owner).inside.push_back(&object);
    }
    objectsById[object.id] = &object;
    return object;
}

template <class KIND>
KIND &RecordingHost::makeUnit(const CString &name, const CString &metaClass, const CString &extension,
                              IDObject *owner) {
    KIND &unit = make<KIND>(name, metaClass, owner);
    unit.saveUnit = true;
    unit.extension = extension;
    unit.fileName = name + extension;
    if (model.activeProject != nullptr) {
        unit.directory = model.activeProject->directory;
    }
    model.repositoryFiles.AddTail(&unit);
    return unit;
}

Project &RecordingHost::addProject(const CString &name, const CString &directory) {
    // A second project has no owner, so it is made as if there were no first one.
    Project *const first = std::exchange(model.activeProject, nullptr);
    Project &project = makeUnit<Project>(name, "Project", model.projectExtension.newer, nullptr);
    project.projectFileDirectory = directory;
    project.directory = directory + "/_" + name;
    if (model.workspace == nullptr) {
        model.workspace = &make<Workspace>("Workspace", "Workspace", nullptr);
    }
    model.activeProject = first == nullptr ? &project : first;
    return project;
}

Subsystem &RecordingHost::addSubsystem(const CString &name, IDObject *owner) {
    return makeUnit<Subsystem>(name, "Subsystem", model.subsystemExtension.newer, owner);
}

Class &RecordingHost::addClass(const CString &name, IDObject *owner) {
    return makeUnit<Class>(name, "Class", ".ocl", owner);
}

Component &RecordingHost::addComponent(const CString &name, IDObject *owner) {
    auto &component = makeUnit<Component>(name, "Component", model.componentExtension.newer, owner);
    if (model.activeProject != nullptr && model.activeProject->component == nullptr) {
        model.activeProject->component = &component;
    }
    return component;
}

Configuration &RecordingHost::addConfiguration(const CString &name, Component &component) {
    auto &configuration = make<Configuration>(name, "Configuration", &component);
    if (component.activeConfig == nullptr) {
        component.activeConfig = &configuration;
    }
    if (model.activeProject != nullptr && model.activeProject->configuration == nullptr) {
        model.activeProject->configuration = &configuration;
    }
    return configuration;
}

File &RecordingHost::addFile(const CString &name, IDObject *owner) {
    return makeUnit<File>(name, "File", model.fileExtension.newer, owner);
}

EmbeddedFile &RecordingHost::addEmbeddedFile(const CString &fileName, IDObject *owner) {
    auto &file = makeUnit<EmbeddedFile>(fileName, "ControlledFile", {}, owner);
    const int dot = fileName.ReverseFind('.');
    file.extension = dot < 0 ? CString() : fileName.Mid(dot);
    return file;
}

Fragment &RecordingHost::addFragment(const CString &name, IDObject *owner, IDObject *element) {
    auto &fragment = make<Fragment>(name, "Fragment", owner);
    fragment.element = element;
    return fragment;
}

Element &RecordingHost::addElement(const CString &name, IDObject *owner) {
    return make<Element>(name, "Element", owner);
}

Class &RecordingHost::replaceClass(Class &unit) {
    Class &other = makeUnit<Class>(unit.name, unit.metaClassName, unit.extension, unit.owner);
    objectsById.erase(other.id);
    other.id = unit.id;
    other.fileName = unit.fileName;
    other.directory = unit.directory;
    other.fullFileName = unit.fullFileName;
    other.reposName = unit.reposName;
    removeObject(unit);
    objectsById[other.id] = &other;
    return other;
}

void RecordingHost::removeObject(IDObject &object) {
    ObjectState &state = ObjectState::of(&object);
    while (!state.inside.empty()) {
        removeObject(*state.inside.back());
    }
    if (state.owner != nullptr) {
        std::erase(ObjectState::of(state.owner).inside, &object);
    }
    if (const auto place = model.repositoryFiles.Find(&object)) {
        model.repositoryFiles.RemoveAt(place);
    }
    const auto entry = objectsById.find(state.id);
    if (entry != objectsById.end() && entry->second == &object) {
        objectsById.erase(entry);
    }
    objects_.erase(&object);
}

IProperty &RecordingHost::setProperty(IDObject *object, const CString &subject, const CString &metaclass,
                                      const CString &key, const CString &value) {
    PropertyMap &map = object == nullptr ? defaults_ : ObjectState::of(object).properties;
    return putProperty(map, {subject, metaclass, key}, value, object);
}

IProperty &RecordingHost::setToolDefault(const CString &tool, const CString &key, const CString &value) {
    return setProperty(nullptr, IPN::CM, tool, key, value);
}

void RecordingHost::setTool(const CString &name) {
    setProperty(nullptr, IPN::CM, IPN::CMGeneral, IPN::CMTool, name);
}

IProperty *RecordingHost::find(const IDObject *object, const PropertyName &name, bool localOnly) const {
    const auto in = [&name](const PropertyMap &map) {
        const auto found = map.find(name);
        return found == map.end() ? nullptr : found->second.get();
    };
    bool sawProject = false;
    for (; object != nullptr; object = ObjectState::of(object).owner) {
        const ObjectState &state = ObjectState::of(object);
        sawProject = sawProject || object == model.activeProject;
        if (IProperty *const property = in(state.properties); property != nullptr || localOnly) {
            return property;
        }
    }
    if (!sawProject && model.activeProject != nullptr) {
        if (IProperty *const property = in(model.activeProject->properties)) {
            return property;
        }
    }
    return in(defaults_);
}
