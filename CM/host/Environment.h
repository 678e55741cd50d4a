// Gives access to the environment's interfaces and the host's main window.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CWnd.h"

namespace platform {
class DialogDriver;
}

class ORC_HOST_API IAbsEnvironmentInterface {
  public:
    virtual ~IAbsEnvironmentInterface() = default;
    /// The interface for output, or null.
    [[nodiscard]] static IAbsEnvironmentInterface *CurrentOutputInterface();
    /// The user interface, or null in a program without one.
    [[nodiscard]] static IAbsEnvironmentInterface *CurrentEnvironmentGUIInterface();

    /// The driver that runs the library's dialogs, or null if there is nobody to ask.
    [[nodiscard]] virtual platform::DialogDriver *dialogDriver() = 0;
};

class ORC_HOST_API IEnvironmentInterface {
  public:
    virtual ~IEnvironmentInterface() = default;
    [[nodiscard]] static IEnvironmentInterface *Instance();
};

/// The host's main window, or null.
[[nodiscard]] ORC_HOST_API CWnd *OrpAfxGetMainWnd();
