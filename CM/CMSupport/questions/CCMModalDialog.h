// Runs a dialog of the library with the driver of the host.
#pragma once

#include "CM/platform/dialog/CDialog.h"

class CCMModalDialog : public CDialog {
  public:
    /// Runs the dialog and returns the result that ended it, or that of OnNotAnswered() if nobody answers.
    int DoModal();

  protected:
    using CDialog::CDialog;

    /// Returns the result of a dialog that nobody answers. It must be a safe one, which loses no data.
    virtual int OnNotAnswered() { return IDCANCEL; }
};
