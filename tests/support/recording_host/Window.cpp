#include "tests/support/recording_host/Window.h"

#include "CM/host/Environment.h"
#include "CM/host/IAbstractCMManager.h"
#include "CM/host/IBaseCMFacade.h"
#include "CM/host/LoadOnDemandManager.h"
#include "tests/support/recording_host/RecordingHost.h"

namespace {

class RecordingOutputWindow final : public ICMOutputWindow {
  public:
    void clear() override {
        RecordingHost::current().note("clear window");
        RecordingHost::current().window.stream.str({});
    }
};

class RecordingCMManager final : public IAbstractCMManager {
  public:
    std::ostream *getOutputStream() override {
        recording::OutputWindow &window = RecordingHost::current().window;
        return window.hasStream ? &window.stream : nullptr;
    }
    void showOutputWindow(bool show) override {
        RecordingHost::current().note(show ? "show window 1" : "show window 0");
        if (RecordingHost::current().window.onShow) {
            RecordingHost::current().window.onShow();
        }
    }
    ICMOutputWindow *getOutputWindow() override {
        static RecordingOutputWindow window; // holds nothing
        return RecordingHost::current().window.hasWindow ? &window : nullptr;
    }
};

class RecordingEnvironment final : public IAbsEnvironmentInterface {
  public:
    platform::DialogDriver *dialogDriver() override { return RecordingHost::current().environment.dialogDriver; }
};

class RecordingInstance final : public IEnvironmentInterface {};

class RecordingLoader final : public LoadOnDemandManager {
  public:
    int completeLoadScopeWithDialog(IDObject *object, const CString &text, int flag) override {
        RecordingHost &host = RecordingHost::current();
        CString call;
        call.Format("complete load %s flag=%d: %s", object == nullptr ? "none" : object->getName().c_str(), flag,
                    text.c_str());
        host.note(call);
        return host.loadOnDemand.result;
    }
};

// None of these has state: their results are those of the current host.
RecordingEnvironment environment;

} // namespace

IAbstractCMManager *IAbstractCMManager::GetCMManager() {
    static RecordingCMManager manager;
    return RecordingHost::current().window.managerExists ? &manager : nullptr;
}

IAbsEnvironmentInterface *IAbsEnvironmentInterface::CurrentOutputInterface() {
    return RecordingHost::current().environment.hasOutputInterface ? &environment : nullptr;
}
IAbsEnvironmentInterface *IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface() {
    return RecordingHost::current().environment.hasInterfaceToUser ? &environment : nullptr;
}
IEnvironmentInterface *IEnvironmentInterface::Instance() {
    static RecordingInstance instance;
    return RecordingHost::current().environment.hasInstance ? &instance : nullptr;
}

CWnd *OrpAfxGetMainWnd() {
    recording::MainWindow &window = RecordingHost::current().mainWindow;
    return window.exists ? &window : nullptr;
}

LoadOnDemandManager *LoadOnDemandManager::instance() {
    static RecordingLoader loader;
    return RecordingHost::current().loadOnDemand.exists ? &loader : nullptr;
}

IBaseCMFacade::IBaseCMFacade() = default;
IBaseCMFacade::~IBaseCMFacade() = default;
