// Holds the windows of the recording host: the CM output window, the main window, and the dialog driver.
#pragma once

#include "CM/platform/CWnd.h"

#include <functional>
#include <sstream>

namespace platform {
class DialogDriver;
}

namespace recording {

class MainWindow final : public CWnd {
  public:
    bool exists = false;
    bool enabled = true;
    CWnd *popup = nullptr; ///< null if the window itself was active last
    void *handle = nullptr;

    [[nodiscard]] bool IsWindowEnabled() const override { return enabled; }
    [[nodiscard]] CWnd *GetLastActivePopup() override { return popup == nullptr ? this : popup; }
    [[nodiscard]] void *GetSafeHwnd() const override { return handle; }
};

struct OutputWindow {
    bool managerExists = true;
    bool hasStream = true;
    bool hasWindow = true;
    std::function<void()> onShow; ///< called before the window is shown; it may throw
    std::ostringstream stream;
    /// The output so far.
    [[nodiscard]] std::string text() const { return stream.str(); }
};

struct Environment {
    bool hasOutputInterface = true;
    bool hasInterfaceToUser = true;
    bool hasInstance = true;
    platform::DialogDriver *dialogDriver = nullptr; ///< set by the test
};

} // namespace recording
