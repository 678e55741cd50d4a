// Defines CDialog, a dialog as a plain model. It owns its controls as members. Its handlers (OnInitDialog, On...)
// decide what the controls contain and which of them can be used. It does not know what shows it.
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

    /// Returns the name by which scripts and drivers address the dialog; never shown.
    [[nodiscard]] const CString &name() const { return name_; }
    [[nodiscard]] const CString &title() const { return title_; }
    void SetWindowText(CString title) { title_ = std::move(title); }

    /// Returns the controls in the order of their declaration.
    [[nodiscard]] const std::vector<CControl *> &controls() const { return controls_; }
    /// Returns the control with this id, or null.
    [[nodiscard]] CControl *control(const CString &id) const;
    /// Returns the controls that the user can use now, in the same order.
    [[nodiscard]] std::vector<CControl *> usableControls() const;
    /// Returns the button with this id if it can be used, or null.
    [[nodiscard]] CButton *button(const CString &id) const;
    /// Returns the OK button of a dialog that only informs, in which only this button and check boxes can be used.
    /// Returns null for any other dialog.
    [[nodiscard]] CButton *onlyButton() const;
    /// Returns the button that closing the window presses: Cancel, or the OK button of a dialog that only informs.
    /// Null means that the window can't be closed because the dialog needs an answer.
    [[nodiscard]] CButton *closingButton() const;
    /// Returns the button for the safe answer, which loses no data: No, otherwise the closing button. Null if the
    /// dialog has neither.
    [[nodiscard]] CButton *safeButton() const;

    /// What the dialog says: its visible texts, separated by blanks, and the first visible icon.
    [[nodiscard]] CString prompt() const;
    [[nodiscard]] CIcon::Kind icon() const;
    /// Returns the control that has the keyboard focus, or null.
    [[nodiscard]] CControl *focus() const { return focus_; }

    /// Calls OnInitDialog and has the driver run the dialog. Returns the result that ended it, or
    /// dialogNotAnswered if nobody answers. With a null driver it does nothing and returns dialogNotAnswered. An
    /// exception from a handler passes through and closes the dialog. A dialog can be run again after it has
    /// ended; its fields keep their contents.
    int DoModal(platform::DialogDriver *driver);

    [[nodiscard]] bool isOpen() const { return open_; }
    /// Event: the user closes the window, which presses closingButton(). Returns false and does nothing if there
    /// is no such button or the dialog isn't open: a dialog that needs an answer can't be closed without one.
    bool close();

  protected:
    explicit CDialog(CString name) : name_(std::move(name)) {}

    /// Ends the dialog as soon as the running handler returns.
    void EndDialog(int result);

    /// Called before the dialog is shown. If it ends the dialog, the dialog isn't shown.
    virtual void OnInitDialog() {}
    virtual void OnOK() { EndDialog(IDOK); }
    /// Handles the Cancel button.
    virtual void OnCancel() { EndDialog(IDCANCEL); }

  private:
    friend class CControl;

    CString name_;
    CString title_;
    std::vector<CControl *> controls_; ///< members of the derived class, which register and unregister themselves
    CControl *focus_ = nullptr;
    int result_ = dialogNotAnswered;
    bool open_ = false;
};
