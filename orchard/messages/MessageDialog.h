// Defines MessageDialog, which shows the host's message boxes as dialogs, so that all interaction goes through
// dialogs.
#pragma once

#include "CM/platform/dialog/CDialog.h"

namespace orchard {

class MessageDialog : public CDialog {
  public:
    /// `flags` are the MB_ flags of the box: its buttons, its icon and its default button. With a `checkBox` text
    /// the user can turn the box off for good.
    MessageDialog(CString title, CString text, unsigned int flags, const CString &checkBox = {});

    /// Returns the id of the safe button, for a question that nobody answers.
    [[nodiscard]] int safeAnswer() const { return no_.isVisible() ? IDNO : IDOK; }
    /// Returns the text of the button with this id; empty for a button that the box does not have.
    [[nodiscard]] CString captionOf(int answer) const;
    [[nodiscard]] bool isTurnedOff() const { return turnOff_.GetCheck(); }

  private:
    CIcon icon_{*this, "icon"};
    CStatic text_;
    CCheckBox turnOff_;
    CButton ok_{*this, "ok", "OK", [this] { EndDialog(IDOK); }};
    CButton yes_{*this, "yes", "Yes", [this] { EndDialog(IDYES); }};
    CButton no_{*this, "no", "No", [this] { EndDialog(IDNO); }};
    CButton cancel_{*this, "cancel", "Cancel", [this] { EndDialog(IDCANCEL); }};
};

} // namespace orchard
