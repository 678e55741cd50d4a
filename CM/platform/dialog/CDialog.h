// CDialog: a dialog as a plain model. It owns its controls as members, decides in its handlers (OnInitDialog,
// On...) what they hold and which of them can be used, and knows nothing of what shows it.
#pragma once

#include "CM/platform/dialog/CControl.h"
#include "CM/platform/dialog/Controls.h"
#include "CM/platform/dialog/DialogDriver.h"
#include "CM/platform/dialog/DialogIds.h"

#include <vector>

class CDialog {
  public:
    CDialog(const CDialog &) = delete;
    CDialog &operator=(const CDialog &) = delete;
    virtual ~CDialog() = default;

    /// The name by which scripts and drivers address the dialog; never shown.
    [[nodiscard]] const CString &name() const { return name_; }
    [[nodiscard]] const CString &title() const { return title_; }
    void SetWindowText(CString title) { title_ = std::move(title); }

    /// The controls in the order of their declaration.
    [[nodiscard]] const std::vector<CControl *> &controls() const { return controls_; }
    /// The control with this id, or null.
    [[nodiscard]] CControl *control(const CString &id) const;
    /// The control that has the keyboard, or null.
    [[nodiscard]] CControl *focus() const { return focus_; }

    /// Calls OnInitDialog and has the driver run the dialog. Returns the result that ended it, or
    /// dialogNotAnswered if the driver is null or has nobody to answer. A handler's exception passes through, and
    /// the dialog is closed then. A dialog can be run again after it has ended; its fields keep what they hold.
    int DoModal(platform::DialogDriver *driver);

    [[nodiscard]] bool isOpen() const { return open_; }
    /// Event: the user closes the window. Calls OnCancel; refused (false) if the dialog isn't open.
    bool close();

  protected:
    explicit CDialog(CString name) : name_(std::move(name)) {}

    /// Ends the dialog after the handler that is running.
    void EndDialog(int result);

    /// Before the dialog is shown. May end it, which shows nothing.
    virtual void OnInitDialog() {}
    virtual void OnOK() { EndDialog(IDOK); }
    /// The Cancel button, and a closed window.
    virtual void OnCancel() { EndDialog(IDCANCEL); }

  private:
    friend class CControl;

    CString name_;
    CString title_;
    std::vector<CControl *> controls_; ///< members of the derived class, which enter and leave by themselves
    CControl *focus_ = nullptr;
    int result_ = dialogNotAnswered;
    bool open_ = false;
};
