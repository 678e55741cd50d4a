// CCMModalDialog: a dialog of the library, which the driver of the host runs.
#pragma once

#include "CM/platform/dialog/CDialog.h"

class CCMModalDialog : public CDialog {
  public:
    /// Runs the dialog and returns the result that ended it, or OnNotAnswered() where nobody answers.
    int DoModal();

  protected:
    using CDialog::CDialog;

    /// The result of a dialog that nobody answers: the one that loses nothing.
    virtual int OnNotAnswered() { return IDCANCEL; }
};
