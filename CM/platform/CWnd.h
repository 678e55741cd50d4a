// CWnd: a window as the library sees it, without a toolkit.
#pragma once

class CWnd {
  public:
    virtual ~CWnd() = default;
    /// Whether the window takes input at this moment.
    [[nodiscard]] virtual bool IsWindowEnabled() const = 0;
    /// The window that was active last among this one and those that it owns.
    [[nodiscard]] virtual CWnd *GetLastActivePopup() = 0;
    /// What the windowing system calls the window; null without one.
    [[nodiscard]] virtual void *GetSafeHwnd() const = 0;
};
