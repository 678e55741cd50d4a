#include "CM/CMSupport/command/CommandRun.h"

#include "CM/CMSupport/command/LoggedRun.h"
#include "CM/CMSupport/command/ReportedExpansion.h"
#include "CM/CMSupport/core/CMUnit.h"

namespace command {

bool isToolConfigured(CMOperation &operation, bool hybrid, CString &errorText, CMDiagnosticList &diags) {
    if (operation.isCMTool(errorText, nullptr, hybrid) != 0) {
        return true;
    }
    CMDiagnostic diagnostic(0, errorText, static_cast<const IUnit *>(nullptr));
    diags.AddTail(diagnostic);
    OutcomeReport report;
    report.fail(CMOutcome::Kind::noTool, errorText);
    report.send();
    return false;
}

template <class ITEM>
CommandRun<ITEM>::CommandRun(CommandTexts texts, CMArgumentList &args, CString &errorText)
    : texts_(std::move(texts)), args_(args), errorText_(errorText) {}

template <class ITEM> void CommandRun<ITEM>::work(ITEM *item) {
    if (item == nullptr) {
        return;
    }
    report_.emplace(*item);
    if (!report_->mayBegin()) {
        return;
    }
    workOn(*item);
    report_->send(); // after the guard has committed or rolled back
}

template <class ITEM> void CommandRun<ITEM>::workOn(ITEM &item) {
    if (!mayReachCommand(item, {}, report())) {
        refuse();
        return;
    }
    if (!isWanted(item)) {
        return;
    }
    prepare(item);
    std::optional<CMORYHandler> guard; // rolls back at the end unless it was committed
    const auto startGuard = [&] {
        if (texts_.guard) {
            // The result is ignored: a file that needs no guard returns 0 too.
            guard.emplace(&item).startTranscation(*texts_.guard);
        }
    };
    {
        CMUnit unit(&item);
        const PushedArgument pushedUnit(args_, unit);
        if (!mayReachCommand(item, namesBeside(), report())) { // the archive is selected only now
            refuse();
            return;
        }
        CString command;
        if (texts_.order == CommandTexts::Order::guardThenExpansion) {
            startGuard();
            result_ = expand(item, command);
        } else {
            result_ = expand(item, command);
            startGuard(); // required even if it failed: Fetch.StartsTheGuardAfterAFailedExpansionAndRollsItBack
        }
        if (result_ == 1) {
            beforeRun(item);
            execute(command);
        }
        if (result_ == 1) {
            followUp(item, guard ? &*guard : nullptr);
        }
    }
    afterItem();
}

template <class ITEM> void CommandRun<ITEM>::followUp(ITEM & /*item*/, CMORYHandler *guard) {
    if (guard != nullptr) {
        guard->commit();
    }
}

template <class ITEM> void CommandRun<ITEM>::log(const CString &text, int line) {
    log_.Min(texts_.source, line, text);
}

template <class ITEM> int CommandRun<ITEM>::expand(ITEM &item, CString &command) {
    return expandProperty(templateFor(item), args_, command, texts_.hybrid, report());
}

template <class ITEM> void CommandRun<ITEM>::execute(const CString &command) {
    CString output;
    result_ =
        runLogged(log_, {texts_.source, texts_.beforeRun, texts_.afterRun}, command, output, errorText_, report());
    report().printed(std::move(output));
}

template class CommandRun<IUnit>;
template class CommandRun<CMArchiveItem>;

} // namespace command
