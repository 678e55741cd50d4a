// Runs the command of an operation for each item, in the steps that all command operations share: it pushes the
// arguments for the duration of the call, expands the template, guards the project file, runs the command between
// two log lines, and determines the result. An operation derives its own run and overrides what is special to it.
#pragma once

#include "CM/CMSupport/command/NameGuard.h"
#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMORYHandler.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/CMSupport/core/PushedArgument.h"
#include "CM/host/IUnit.h"
#include "CM/host/LogTrace.h"
#include "CM/platform/CString.h"

#include <optional>

namespace command {

/// Describes an operation's command.
struct CommandTexts {
    enum class Order { expansionThenGuard, guardThenExpansion };

    CString property;                                ///< key of the template
    const char *source;                              ///< source path for the log
    const char *beforeRun;                           ///< the log line before the run; the command follows
    const char *afterRun;                            ///< the log line after the run; the output follows. Null for
                                                     ///< both: the operation logs nothing
    std::optional<CMORYHandler::ORYOPER> guard = {}; ///< empty: the operation uses no guard
    Order order = Order::expansionThenGuard;
    bool hybrid = false; ///< passed to the expansion
};

/// Returns the result of CMOperation::isCMTool, which assigns a message to `errorText`. Without a tool appends a
/// diagnostic with the message, the only one that a command operation appends, and reports the outcome.
[[nodiscard]] bool isToolConfigured(CMOperation &operation, bool hybrid, CString &errorText,
                                    CMDiagnosticList &diags);

using core::PushedArgument;

/// ITEM is IUnit or CMArchiveItem. The argument list contains the archive as long as the run exists.
template <class ITEM> class CommandRun {
  public:
    /// `errorText` is required to be one text for the complete run: the errors of one item precede those of the
    /// next. The shell shows and tests all of it each time, so the cost of many failures is quadratic in their
    /// text. Test: CheckOut.ErrorsOfOneUnitStandInFrontOfThoseOfTheNext.
    CommandRun(CommandTexts texts, CMArgumentList &args, CString &errorText);
    virtual ~CommandRun() = default;
    CommandRun(const CommandRun &) = delete;
    CommandRun &operator=(const CommandRun &) = delete;

    /// Works on one item; skips null, and an item that the outcome observer does not let begin. Refuses an item
    /// with a name that can't be quoted before doing anything else for it, and an item whose archive or target
    /// directory can't be quoted once its archive is selected: see NameGuard.h. A failure affects only result()
    /// and the outcome, which is reported at the end of each item; the next item is worked on as usual.
    void work(ITEM *item);
    /// Works on all items of a list, which must not change in the meantime.
    template <class LIST> void workAll(const LIST &items) {
        for (ITEM *const item : items) {
            work(item);
        }
    }

    /// Returns the result of the last item that was worked on. As required, this is not a summary (test:
    /// CheckOut.OnlyTheLastUnitDecidesTheResult): 1 after a run, even if the tool failed; 0 if its name can't be
    /// quoted, or if its command could not be expanded or run; 0 also if no item was worked on.
    [[nodiscard]] int result() const { return result_; }
    /// Returns whether an item was refused because no command can quote its name.
    [[nodiscard]] bool hasRefused() const { return hasRefused_; }

  protected:
    /// Returns whether to work on the item. Called before anything is done for it. An override that returns false
    /// records the reason in the report; the result stays unchanged.
    virtual bool isWanted(ITEM & /*item*/) { return true; }
    /// Returns the names that reach the item's command besides its own; by default the archive and the target
    /// directory. Called after prepare(), while the item's argument is in the list.
    [[nodiscard]] virtual Names namesBeside() { return namesIn(args_); }
    /// Called before the item's argument is pushed.
    virtual void prepare(ITEM & /*item*/) {}
    /// Returns the key of the template for this item; the default is CommandTexts::property.
    [[nodiscard]] virtual CString templateFor(ITEM & /*item*/) { return texts_.property; }
    /// Produces the command; the return value becomes the result. The default expands the template.
    virtual int expand(ITEM &item, CString &command);
    /// Called between a successful expansion and the first log line.
    virtual void beforeRun(ITEM & /*item*/) {}
    /// Called after a successful run. `guard` is null if the operation uses none. The default commits the guard.
    virtual void followUp(ITEM &item, CMORYHandler *guard);
    /// Called at the end of each item that was wanted, before its guard is destroyed.
    virtual void afterItem() {}

    void setResult(int result) { result_ = result; }
    /// Sets the result of an item with a name that no command can quote.
    void refuse() {
        result_ = 0;
        hasRefused_ = true;
    }
    [[nodiscard]] CString &errorText() { return errorText_; }
    [[nodiscard]] CMArgumentList &arguments() { return args_; }
    /// Returns the report of the current item.
    [[nodiscard]] OutcomeReport &report() { return *report_; }
    /// Logs `text` with the caller's line number.
    void log(const CString &text, int line = __builtin_LINE());

  private:
    void workOn(ITEM &item);
    void execute(const CString &command);

    CommandTexts texts_;
    CMArgumentList &args_;
    CString &errorText_;
    CMArchive archive_{""};
    PushedArgument pushedArchive_{args_, archive_};
    LogTrace::Log log_{LogTrace::Log::cm};
    int result_ = 0;
    bool hasRefused_ = false;
    std::optional<OutcomeReport> report_;
};

extern template class CommandRun<IUnit>;
extern template class CommandRun<CMArchiveItem>;

} // namespace command
