// Sets up the tests of what the command operations report to the outcome observer.
#pragma once

#include "tests/CM/CMSupport/command/CheckOutFixture.h"
#include "tests/support/OutcomeRecorder.h"

#include <functional>
#include <string>

class Outcome : public CheckOutFixture {
  protected:
    Outcome() {
        setToolProperty(IPN::CMCheckIn, "ci $Unit");
        setToolProperty(IPN::CMUnLockItem, "undo $Unit");
        setToolProperty("AskOnCheckoutReadWrite", "Yes");
    }
    template <class OPERATION> int run(CMUnitList units) { return OPERATION()(units, args, diags, false); }
    template <class OPERATION, class... UNITS> int runOn(UNITS &...given) {
        return run<OPERATION>(list(&given...));
    }
    /// A unit whose file holds "old".
    recording::Class &unitWithFile(const CString &name) {
        auto &unit = host.addUnit(name);
        write(unit.getFullFileName().str(), "old");
        return unit;
    }
    void toolDoes(const std::function<recording::ToolRun(const CString &)> &run) { host.worker.run = run; }
    void toolEnds(const RunEnd &end) {
        toolDoes([end](const CString &) { return recording::ToolRun{{}, {}, 0, end}; });
    }
    [[nodiscard]] std::string reason() const { return seen.last().reason.str(); }

    support::OutcomeRecorder seen;
};
