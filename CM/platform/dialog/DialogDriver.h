// Defines the interface between a dialog model and what shows it: a terminal, windows or a script.
#pragma once

class CDialog;

namespace platform {

/// Shows dialogs and delivers the user's events to them. A driver needs to know the kinds of control
/// (ControlVisitor), never a dialog: it walks CDialog::controls(), shows the visible ones, and calls the event
/// functions of the controls (CButton::press, CEdit::enter, ...). After each event anything in the dialog may have
/// changed: CControl::revision shows which controls have changed, RowObserver and ItemObserver show which rows and
/// items.
class DialogDriver {
  public:
    virtual ~DialogDriver() = default;

    /// Shows the dialog and delivers events until it is no longer open (CDialog::isOpen). Meanwhile a handler may
    /// run another dialog with the same driver. When the user closes the window or does something equivalent, the
    /// driver calls CDialog::close; it does not offer this where CDialog::closingButton is null. Returns true when
    /// the dialog has ended. Returns false if nobody can answer it, because the input has ended or never existed:
    /// the dialog then ends unanswered, which is not the same as being closed by the user.
    [[nodiscard]] virtual bool run(CDialog &dialog) = 0;

    /// Returns whether the dialog has been answered in advance, for example by an option of the program. Such an
    /// answer takes precedence over one stored in the user's settings.
    [[nodiscard]] virtual bool answersInAdvance(const CDialog & /*dialog*/) const { return false; }
};

} // namespace platform
