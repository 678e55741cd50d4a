// Provides a host in memory for tests of the library. A member of the test's fixture, it is the host of all
// functions of CM/host until its end, and always starts in the same state: no project, nothing recorded. A test
// sets the plain fields of its parts and of the objects; `calls` records what happened, one text for each call
// with an effect, in order.
#pragma once

#include "tests/support/recording_host/MessageState.h"
#include "tests/support/recording_host/ModelState.h"
#include "tests/support/recording_host/ReloadScript.h"
#include "tests/support/recording_host/Storage.h"
#include "tests/support/recording_host/SystemState.h"
#include "tests/support/recording_host/Window.h"
#include "tests/support/recording_host/Worker.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class RecordingHost {
  public:
    RecordingHost();
    ~RecordingHost();
    RecordingHost(const RecordingHost &) = delete;
    RecordingHost &operator=(const RecordingHost &) = delete;

    /// Returns the current host; throws std::logic_error without one.
    static RecordingHost &current();

    // --- Records.

    /// Every call with an effect: undo, log, messages, window, reload, worker, model setters, file changes.
    std::vector<std::string> calls;
    /// Every property look-up, and the lines of the log with their line numbers.
    std::vector<recording::Lookup> lookups;
    struct LogLine {
        int name = 0;
        CString source;
        int line = 0;
        CString text;
    };
    std::vector<LogLine> logLines;
    int logsOpen = 0;
    int handlesAlive = 0; ///< handles that are not released yet
    int ignoringCodeGeneration = 0;

    /// Returns the calls that begin with `prefix`, in order.
    [[nodiscard]] std::vector<std::string> callsOf(std::string_view prefix) const;
    void clearRecords();

    // --- Settings of a test.

    recording::ModelState model;
    recording::MessageState messages;
    recording::SystemState places;
    recording::OutputWindow window;
    recording::Environment environment;
    recording::MainWindow mainWindow;
    recording::ReloadScript reload;
    recording::Worker worker;
    struct {
        bool exists = true;
        int depth = 0;                 ///< open brackets
        int nothingDepth = 0;          ///< open brackets without an entry
        std::function<void()> onStart; ///< called before a bracket opens; it may throw
        std::function<void()> onEnd;   ///< called before one closes; it may throw
    } undo;
    struct {
        bool exists = false;
        int result = 1;
    } loadOnDemand;
    /// The objects of handles, by identifier. A test removes or replaces entries.
    std::unordered_map<CString, IDObject *> objectsById;

    /// The addresses of objects; a test can have one of them reused.
    recording::Storage storage;

    // --- Builders. Objects exist until they are removed or the host ends. By default the active project is
    // the owner.

    /// The first project becomes the active one, with a workspace. Its units are in `directory`/_NAME.
    recording::Project &addProject(const CString &name = "Plant", const CString &directory = "/models");
    recording::Subsystem &addSubsystem(const CString &name, IDObject *owner = nullptr);
    recording::Class &addClass(const CString &name, IDObject *owner = nullptr);
    /// Adds a class, the ordinary kind of unit.
    recording::Class &addUnit(const CString &name, IDObject *owner = nullptr) { return addClass(name, owner); }
    /// The first component becomes the active one.
    recording::Component &addComponent(const CString &name, IDObject *owner = nullptr);
    /// The first configuration becomes the active one of its component and of the project.
    recording::Configuration &addConfiguration(const CString &name, recording::Component &component);
    recording::File &addFile(const CString &name, IDObject *owner = nullptr);
    recording::EmbeddedFile &addEmbeddedFile(const CString &fileName, IDObject *owner = nullptr);
    recording::Fragment &addFragment(const CString &name, IDObject *owner, IDObject *element = nullptr);
    recording::Element &addElement(const CString &name, IDObject *owner = nullptr);

    /// Makes another object with the identifier, owner and names of `unit`, like a reload. Handles return it from
    /// then on, and it replaces the old one in the repository files. Deletes the old one with all that it owns.
    recording::Class &replaceClass(recording::Class &unit);
    /// Removes the object and all that it owns from the model: handles return null, and the objects are deleted,
    /// so that a sanitizer finds every use of them.
    void removeObject(IDObject &object);

    /// Sets a property on an object, or for null as an installed default, which all objects inherit.
    IProperty &setProperty(IDObject *object, const CString &subject, const CString &metaclass, const CString &key,
                           const CString &value);
    IProperty &setProperty(IDObject &object, const CString &subject, const CString &metaclass, const CString &key,
                           const CString &value) {
        return setProperty(&object, subject, metaclass, key, value);
    }
    /// Sets the installed default of a tool's key, with the CM subject.
    IProperty &setToolDefault(const CString &tool, const CString &key, const CString &value);
    /// Sets the name of the tool as an installed default.
    void setTool(const CString &name);
    /// Sets a setting of section "General".
    void setSetting(const CString &key, const CString &value) { places.settings[{"General", key}] = value; }

    // --- Internal to the host.

    void note(const CString &call) { calls.push_back(call.str()); }
    [[nodiscard]] IProperty *find(const IDObject *object, const recording::PropertyName &name,
                                  bool localOnly) const;

  private:
    template <class KIND> KIND &make(const CString &name, const CString &metaClass, IDObject *owner);
    template <class KIND>
    KIND &makeUnit(const CString &name, const CString &metaClass, const CString &extension, IDObject *owner);

    std::unordered_map<const IDObject *, std::unique_ptr<IDObject, recording::EndsObject>> objects_;
    recording::PropertyMap defaults_;
    int lastId_ = 0;
};
