// Gives access to the host's CM output window.
#pragma once

#include "CM/host/HostApi.h"

#include <ostream>

class ORC_HOST_API ICMOutputWindow {
  public:
    virtual ~ICMOutputWindow() = default;
    virtual void clear() = 0;
};

class ORC_HOST_API IAbstractCMManager {
  public:
    virtual ~IAbstractCMManager() = default;

    /// The manager, or null if no CM window exists.
    [[nodiscard]] static IAbstractCMManager *GetCMManager();
    /// The stream of the CM output window, or null.
    [[nodiscard]] virtual std::ostream *getOutputStream() = 0;
    virtual void showOutputWindow(bool show) = 0;
    /// The window itself, or null.
    [[nodiscard]] virtual ICMOutputWindow *getOutputWindow() = 0;
};
