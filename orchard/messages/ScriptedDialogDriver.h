// Answers dialogs from a script: for tests, and for programs that run without a user at the terminal.
#pragma once

#include "CM/platform/CString.h"
#include "CM/platform/dialog/CDialog.h"

#include <deque>
#include <functional>
#include <unordered_map>
#include <vector>

namespace orchard {

/// Lists what the script does in one run of a dialog, one step per text:
///   press BUTTON                   close (refused where the dialog can't be closed)
///   check BOX, uncheck BOX         check TREE ITEM, uncheck TREE ITEM
///   edit FIELD TEXT                choose FIELD OPTION
///   select LIST ROW ROW...         select TREE ITEM|ITEM...
///   activate LIST ROW              activate TREE ITEM
///   column LIST COLUMN             expand TREE ITEM, collapse TREE ITEM
/// Controls are identified by their ids, options and items by their texts, rows and columns by their numbers from
/// 0.
using DialogScript = std::vector<CString>;

class ScriptedDialogDriver : public platform::DialogDriver {
  public:
    /// A dialog that only informs. It ends at once unless there is a script for it.
    struct Notice {
        CIcon::Kind icon;
        CString text;
    };

    /// Sets the script for the next run of the dialog with this name. Each run of a dialog uses the next of its
    /// scripts.
    void play(const CString &dialog, DialogScript script);
    /// Sets the script for runs that have none of their own. It is empty at first, so that nobody answers.
    void setDefaultScript(DialogScript script) { defaultScript_ = std::move(script); }

    /// Performs the steps until the dialog has ended. A dialog that is still open after the last step counts as
    /// unanswered. A step that can't be done is skipped and added to problems().
    [[nodiscard]] bool run(CDialog &dialog) override;

    /// Called with each dialog when it is shown, before the first step; may be empty.
    std::function<void(CDialog &)> onShown;

    /// Returns the names of the dialogs that were shown, in order, without the notices.
    [[nodiscard]] const std::vector<CString> &shown() const { return shown_; }
    [[nodiscard]] const std::vector<Notice> &notices() const { return notices_; }
    /// Returns the steps that could not be done: "DIALOG: STEP: why".
    [[nodiscard]] const std::vector<CString> &problems() const { return problems_; }

  private:
    [[nodiscard]] bool hasScript(const CString &dialog) const;
    [[nodiscard]] DialogScript nextScript(const CString &dialog);

    std::unordered_map<CString, std::deque<DialogScript>> scripts_;
    DialogScript defaultScript_;
    std::vector<CString> shown_;
    std::vector<Notice> notices_;
    std::vector<CString> problems_;
};

} // namespace orchard
