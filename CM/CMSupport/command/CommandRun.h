// CommandRun: the steps that every command operation goes through, written once: the arguments pushed for the
// length of the call, the expansion of a template, the guard of the project file, the run with its two log lines,
// and the rule on the result. An operation derives its own run and fills in what is special to it.
#pragma once

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMORYHandler.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/host/IUnit.h"
#include "CM/host/LogTrace.h"
#include "CM/platform/CString.h"

#include <optional>

namespace command {

/// What an operation's command is called and made from.
struct CommandTexts {
    enum class Order { expansionThenGuard, guardThenExpansion };

    CString property;                                ///< key of the template
    const char *source;                              ///< source path for the log
    const char *beforeRun;                           ///< the log line before the run; the command follows
    const char *afterRun;                            ///< the log line after the run; the output follows. Null for
                                                     ///< both: the operation logs nothing
    std::optional<CMORYHandler::ORYOPER> guard = {}; ///< without one the operation uses no guard
    Order order = Order::expansionThenGuard;
    bool hybrid = false; ///< goes to the expansion
};

/// Asks CMOperation::isCMTool. Without a tool, the one diagnostic that a command operation makes is appended, and
/// the operation returns 0. `errorText` receives the message.
[[nodiscard]] bool isToolConfigured(CMOperation &operation, bool hybrid, CString &errorText,
                                    CMDiagnosticList &diags);

/// An argument that is at the end of the list while this object lives.
class PushedArgument {
  public:
    PushedArgument(CMArgumentList &args, CMArgument &argument) : args_(args) { args_.AddTail(&argument); }
    ~PushedArgument() { args_.RemoveTail(); }
    PushedArgument(const PushedArgument &) = delete;
    PushedArgument &operator=(const PushedArgument &) = delete;

  private:
    CMArgumentList &args_;
};

/// ITEM is IUnit or CMArchiveItem. The archive's argument stands on the list while the run lives.
template <class ITEM> class CommandRun {
  public:
    /// `errorText` is required to be one text for the complete run: the errors of one item precede those of the
    /// next. The shell shows and tests all of it each time, so many failures cost the square of what they print.
    /// Test: CheckOut.ErrorsOfOneUnitStandInFrontOfThoseOfTheNext.
    CommandRun(CommandTexts texts, CMArgumentList &args, CString &errorText);
    virtual ~CommandRun() = default;
    CommandRun(const CommandRun &) = delete;
    CommandRun &operator=(const CommandRun &) = delete;

    /// Works on one item; null is skipped. An item with a name that can't be quoted is refused before anything
    /// else is done for it: see NameGuard.h. A failure is seen in the result, and in the outcome that is reported
    /// at the end of the item; the next one is taken as usual.
    void work(ITEM *item);
    /// Works on all items of a list that the run doesn't change.
    template <class LIST> void workAll(const LIST &items) {
        for (ITEM *const item : items) {
            work(item);
        }
    }

    /// The outcome of the last item that was worked on, deliberately not a summary; 0 at the start.
    [[nodiscard]] int result() const { return result_; }

  protected:
    /// Before anything is done for the item; false passes it over and leaves the result as it was. Whoever answers
    /// so says why in the report.
    virtual bool isWanted(ITEM & /*item*/) { return true; }
    /// Before the item's argument is pushed.
    virtual void prepare(ITEM & /*item*/) {}
    /// The key of the template for this item; the default is that of the texts.
    [[nodiscard]] virtual CString templateFor(ITEM & /*item*/) { return texts_.property; }
    /// Makes the command; what it returns becomes the result. The default expands that template.
    virtual int expand(ITEM &item, CString &command);
    /// Between a good expansion and the first log line.
    virtual void beforeRun(ITEM & /*item*/) {}
    /// After a good run. `guard` is null if the operation uses none. The default commits the guard.
    virtual void followUp(ITEM &item, CMORYHandler *guard);
    /// At the end of each item that was wanted, before its guard goes.
    virtual void afterItem() {}

    void setResult(int result) { result_ = result; }
    [[nodiscard]] CString &errorText() { return errorText_; }
    [[nodiscard]] CMArgumentList &arguments() { return args_; }
    /// That of the item at hand.
    [[nodiscard]] OutcomeReport &report() { return *report_; }
    /// The line that is logged is that of the caller.
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
    std::optional<OutcomeReport> report_;
};

extern template class CommandRun<IUnit>;
extern template class CommandRun<CMArchiveItem>;

} // namespace command
