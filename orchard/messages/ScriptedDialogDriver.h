// A driver that answers dialogs from a script: for tests, and for programs that run without anybody at the
// terminal.
#pragma once

#include "CM/platform/CString.h"
#include "CM/platform/dialog/CDialog.h"

#include <deque>
#include <functional>
#include <unordered_map>
#include <vector>

namespace orchard {

/// What the script of one run of a dialog does, one step a text:
///   press BUTTON                   close
///   check BOX, uncheck BOX         check TREE ITEM, uncheck TREE ITEM
///   edit FIELD TEXT                choose FIELD OPTION
///   select LIST ROW ROW...         select TREE ITEM|ITEM...
///   activate LIST ROW              activate TREE ITEM
///   column LIST COLUMN             expand TREE ITEM, collapse TREE ITEM
/// Controls are named by their ids, options and items by their text, rows and columns by their number from 0.
using DialogScript = std::vector<CString>;

class ScriptedDialogDriver : public platform::DialogDriver {
  public:
    /// The script for the next run of the dialog with this name; the runs of a dialog use up its scripts in order.
    void play(const CString &dialog, DialogScript script);
    /// The script for runs that have none of their own. Empty at first: nobody answers then.
    void setDefaultScript(DialogScript script) { defaultScript_ = std::move(script); }

    /// Does the steps until the dialog has ended. A dialog that is still open after the last one has nobody to
    /// answer it. A step that can't be done is passed over and told in problems().
    [[nodiscard]] bool run(CDialog &dialog) override;

    /// Called with each dialog when it is shown, before the first step; may be empty.
    std::function<void(CDialog &)> onShown;

    /// The names of the dialogs that were shown, in order.
    [[nodiscard]] const std::vector<CString> &shown() const { return shown_; }
    /// The steps that could not be done: "DIALOG: STEP: why".
    [[nodiscard]] const std::vector<CString> &problems() const { return problems_; }

  private:
    [[nodiscard]] DialogScript nextScript(const CString &dialog);

    std::unordered_map<CString, std::deque<DialogScript>> scripts_;
    DialogScript defaultScript_;
    std::vector<CString> shown_;
    std::vector<CString> problems_;
};

} // namespace orchard
