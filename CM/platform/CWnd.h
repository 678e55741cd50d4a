// Represents a window as the library sees it, without a toolkit.
#pragma once

class CWnd {
  public:
    virtual ~CWnd() = default;
    /// Whether the window accepts input now.
    [[nodiscard]] virtual bool IsWindowEnabled() const = 0;
    /// The window that was active last, of this one and the windows that it owns.
    [[nodiscard]] virtual CWnd *GetLastActivePopup() = 0;
    /// The windowing system's handle of the window; null without one.
    [[nodiscard]] virtual void *GetSafeHwnd() const = 0;
};
