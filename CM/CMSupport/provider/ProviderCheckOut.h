// Adds to the calls of an operation what the check outs share: the comment, the files that are left alone, and the
// call.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/CMSupport/questions/WritableFileQuestion.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/IUnit.h"

#include <optional>
#include <utility>

namespace provider {

class ProviderCheckOut : public ProviderRun {
  public:
    /// Takes the comment from the first argument, by its name, if the provider accepts comments on check outs.
    ProviderCheckOut(const char *source, const CMArgumentList &args, const CString &commentName,
                     LogsReturn logsReturn = LogsReturn::yes);

    /// Reads whether to ask about writable files. Call it before the first isWanted.
    void readQuestion() { question_.emplace(); }
    /// Returns false, with the reason in the report, for a file that the user has checked out already, which the
    /// CM output window then says, and for a writable file that the user wants to keep. ITEM is IUnit or
    /// CMArchiveItem. Throws if readQuestion() was not called.
    template <class ITEM>
    [[nodiscard]] bool isWanted(const ITEM &item, const CString &file, FileState state, OutcomeReport &report) {
        if (isCheckedOut(file, state)) {
            report.fail(CMOutcome::Kind::nothingToDo, resources::Text::resultAlreadyCheckedOut);
            return false;
        }
        if (!question_.value().mayOverwrite(item, file)) {
            report.fail(CMOutcome::Kind::declined, resources::Text::outcomeDeclined);
            return false;
        }
        return true;
    }
    /// Checks the files out in one call and returns the provider's result.
    long checkOut(const CStringList &files, void *context);

  private:
    [[nodiscard]] static bool isCheckedOut(const CString &file, FileState state);

    CString comment_;
    std::optional<WritableFileQuestion> question_;
};

/// Collects the files of a recursive check out. Leaves out unwanted files (isWanted), and files of which the
/// archive has a newer version, and reports the latter. A null entry takes up a place in the call. `nameOf` gives
/// the file that the provider is asked about, `pathOf` the one to check out. Returns whether a file was out of
/// date.
template <class LIST, class NAME, class PATH>
bool collectUpToDate(ProviderCheckOut &run, const LIST &items, void *context, CallFiles &call, NAME nameOf,
                     PATH pathOf);

/// Shows that a recursive operation has nothing to work on.
void showNothingSelected();
/// Shows that files out of date were left out.
void showOutOfDate();

template <class LIST, class NAME, class PATH>
bool collectUpToDate(ProviderCheckOut &run, const LIST &items, void *context, CallFiles &call, NAME nameOf,
                     PATH pathOf) {
    bool isOutOfDate = false;
    run.readQuestion();
    for (auto *const item : items) {
        if (item == nullptr) {
            call.addEmpty(); // required: the entry counts
            continue;
        }
        OutcomeReport report(*item);
        if (!report.mayBegin()) {
            continue;
        }
        const CString name = nameOf(*item);
        const FileState state = run.stateOf(name, context);
        if (state.has(SCC_STATUS_OUTOFDATE)) {
            isOutOfDate = true;
            report.fail(CMOutcome::Kind::refused, resources::Text::outcomeOutOfDate);
            report.send();
        } else if (!run.isWanted(*item, name, state, report)) {
            report.send();
        } else {
            call.add(pathOf(*item), std::move(report));
        }
    }
    if (isOutOfDate) {
        showOutOfDate();
    }
    return isOutOfDate;
}

} // namespace provider
