// The interface between a dialog model and what shows it: a terminal, windows, a script.
#pragma once

class CDialog;

namespace platform {

/// Shows dialogs and brings them the user's events. A driver needs to know the kinds of control (ControlVisitor),
/// never a dialog: it walks CDialog::controls(), shows the visible ones, and calls the event functions of the
/// controls (CButton::press, CEdit::enter, ...), after each of which anything in the dialog may have changed.
class DialogDriver {
  public:
    virtual ~DialogDriver() = default;

    /// Shows the dialog and delivers events until it is no longer open (CDialog::isOpen). A handler may run
    /// another dialog with the same driver meanwhile. A user who closes the window, or says the like, is
    /// CDialog::close. Returns true when the dialog has ended; false if there is nobody to answer it, because the
    /// input has ended or was never there: the dialog then ends unanswered, which is not the same as a user who
    /// closes it.
    [[nodiscard]] virtual bool run(CDialog &dialog) = 0;
};

} // namespace platform
