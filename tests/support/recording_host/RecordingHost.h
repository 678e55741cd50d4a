// RecordingHost: a host in memory for tests of the library. Made at the start of a test (a member of its fixture),
// it is the host that all functions of CM/host answer for until its end, and it starts out the same each time: no
// project, nothing recorded. What a test can arrange are the plain fields of its parts and of the objects; what
// happened is in `calls`, one text per call that has an effect, in order.
#pragma once

#include "tests/support/recording_host/Messages.h"
#include "tests/support/recording_host/Model.h"
#include "tests/support/recording_host/Places.h"
#include "tests/support/recording_host/Reload.h"
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

    /// The host that lives now; without one std::logic_error is thrown.
    static RecordingHost &current();

    // --- What happened.

    /// Every call that has an effect: undo, log, messages, window, reload, worker, model setters, file changes.
    std::vector<std::string> calls;
    /// Every property look-up, and the lines of the log with their numbers.
    std::vector<recording::Lookup> lookups;
    struct LogLine {
        int name = 0;
        CString source;
        int line = 0;
        CString text;
    };
    std::vector<LogLine> logLines;
    int logsOpen = 0;
    int handlesAlive = 0; ///< handles that were made and not released
    int ignoringCodeGeneration = 0;

    /// The calls that begin with `prefix`, in order.
    [[nodiscard]] std::vector<std::string> callsOf(std::string_view prefix) const;
    void clearRecords();

    // --- What a test arranges.

    recording::Model model;
    recording::Messages messages;
    recording::Places places;
    recording::OutputWindow window;
    recording::Environment environment;
    recording::MainWindow mainWindow;
    recording::Reload reload;
    recording::Worker worker;
    struct {
        bool exists = true;
        int depth = 0;                 ///< brackets that are open
        int nothingDepth = 0;          ///< and of those that make no entry
        std::function<void()> onStart; ///< called before a bracket opens; it may throw
        std::function<void()> onEnd;   ///< called before one closes; it may throw
    } undo;
    struct {
        bool exists = false;
        int result = 1;
    } loadOnDemand;
    /// What handles answer, by identifier. A test takes entries out or puts another object in.
    std::unordered_map<CString, IDObject *> objectsById;

    // --- Builders. Objects live until they are removed or the host ends. Without an owner the active project is
    // the owner.

    /// The first project becomes the active one, with a workspace. Its units stand in `directory`/_NAME.
    recording::Project &addProject(const CString &name = "Plant", const CString &directory = "/models");
    recording::Subsystem &addSubsystem(const CString &name, IDObject *owner = nullptr);
    recording::Class &addClass(const CString &name, IDObject *owner = nullptr);
    /// A class: the plain case of a unit.
    recording::Class &addUnit(const CString &name, IDObject *owner = nullptr) { return addClass(name, owner); }
    /// The first component becomes the active one.
    recording::Component &addComponent(const CString &name, IDObject *owner = nullptr);
    /// The first configuration becomes the active one of its component and of the project.
    recording::Configuration &addConfiguration(const CString &name, recording::Component &component);
    recording::File &addFile(const CString &name, IDObject *owner = nullptr);
    recording::EmbeddedFile &addEmbeddedFile(const CString &fileName, IDObject *owner = nullptr);
    recording::Fragment &addFragment(const CString &name, IDObject *owner, IDObject *element = nullptr);
    recording::Element &addElement(const CString &name, IDObject *owner = nullptr);

    /// Another object with the identifier, owner and names of `unit`, as a reload makes it. Handles answer it from
    /// now on, and it takes the old one's place among the repository files. The old one is gone with all it owns.
    recording::Class &replaceClass(recording::Class &unit);
    /// Takes the object and all that it owns out of the model: handles answer null, and the objects are gone, so
    /// that a sanitizer sees every use of them.
    void removeObject(IDObject &object);

    /// Sets a property on an object; without one as a default of the installation, which all objects inherit.
    IProperty &setProperty(IDObject *object, const CString &subject, const CString &metaclass, const CString &key,
                           const CString &value);
    IProperty &setProperty(IDObject &object, const CString &subject, const CString &metaclass, const CString &key,
                           const CString &value) {
        return setProperty(&object, subject, metaclass, key, value);
    }
    /// The default of the installation for a tool's key, under the subject of CM.
    IProperty &setToolDefault(const CString &tool, const CString &key, const CString &value);
    /// The name of the tool, as a default of the installation.
    void setTool(const CString &name);
    /// A setting of section "General".
    void setSetting(const CString &key, const CString &value) { places.settings[{"General", key}] = value; }

    // --- For the parts of the host.

    void note(const CString &call) { calls.push_back(call.str()); }
    [[nodiscard]] IProperty *find(const IDObject *object, const recording::PropertyName &name,
                                  bool localOnly) const;

  private:
    template <class KIND> KIND &make(const CString &name, const CString &metaClass, IDObject *owner);
    template <class KIND>
    KIND &makeUnit(const CString &name, const CString &metaClass, const CString &extension, IDObject *owner);

    std::unordered_map<const IDObject *, std::unique_ptr<IDObject>> objects_;
    recording::PropertyMap defaults_;
    int lastId_ = 0;
};
