#include "orchard/messages/CMWindow.h"

#include "CM/host/IAbstractCMManager.h"

#include <utility>

namespace {

class StreamWindow final : public ICMOutputWindow {
  public:
    void clear() override {
        if (onClear) {
            onClear();
        }
    }
    std::function<void()> onClear;
};

class StreamManager final : public IAbstractCMManager {
  public:
    std::ostream *getOutputStream() override { return stream; }
    void showOutputWindow(bool show) override { shown = show; }
    ICMOutputWindow *getOutputWindow() override { return &window; }

    std::ostream *stream = nullptr;
    StreamWindow window;
    bool shown = false;
};

StreamManager &manager() {
    static StreamManager theManager;
    return theManager;
}

} // namespace

void orchard::setCMOutputStream(std::ostream *stream, std::function<void()> onClear) {
    manager().stream = stream;
    manager().window.onClear = std::move(onClear);
    manager().shown = false;
}

bool orchard::isCMOutputShown() { return manager().shown; }

IAbstractCMManager *IAbstractCMManager::GetCMManager() {
    return manager().stream == nullptr ? nullptr : &manager();
}
