// Tests how the program derives the result of an operation from what the library reports, on either route. The
// test supplies the entry, and no tool runs.
#include "apps/orchard-cm/operation/Operation.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/model/UnitSelection.h"
#include "orchard/storage/NewProject.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

using namespace orchard_cm;
using testing::HasSubstr;
using Kind = CMOutcome::Kind;
using Outcome = ItemResult::Outcome;

namespace {

constexpr Wording checkedOut{.done = "checked out"};

class OperationOnUnits : public testing::Test {
  protected:
    OperationOnUnits() { options.project = orchard::createSampleProject(directory / "Plant", "None").projectFile; }

    /// An outcome that a route of the library may report.
    CMOutcome outcomeOf(const char *unit, Kind kind = Kind::done, const char *reason = "") {
        CMOutcome outcome;
        outcome.unit = outcome.unitNow = &unitNamed(session.project(), unit);
        outcome.file = outcome.unit->getFullFileName();
        outcome.kind = kind;
        outcome.reason = reason;
        outcome.fileExists = true;
        return outcome;
    }
    static void report(const CMOutcome &outcome) { CMFacade::outcomeObserver()->report(outcome); }

    OperationReport operate(const std::vector<std::string> &names, const Operation &operation,
                            const std::vector<CMOutcome> &reports, int result = 1) {
        Context context{options, output, session};
        return operateOnUnits(context, unitsNamed(session.project(), names), operation,
                              [&](CMUnitList &, CMArgumentList &, CMDiagnosticList &) {
                                  std::ranges::for_each(reports, report);
                                  return result;
                              });
    }
    OperationReport checkOut(const std::vector<std::string> &names, const std::vector<CMOutcome> &reports) {
        return operate(names, {.wording = checkedOut}, reports);
    }
    ItemResult checkOutPump(const CMOutcome &outcome) { return checkOut({"Pump"}, {outcome}).items.front(); }
    std::string told(const OperationReport &report) {
        Context context{options, output, session};
        output.begin("checkout");
        output.end(writeResult(context, report, checkedOut));
        return out.str();
    }

    support::TemporaryDirectory directory;
    GlobalOptions options;
    std::ostringstream out;
    std::ostringstream err;
    Output output{Output::Form::text, out, err, false};
    Session session{options, output};
};

} // namespace

TEST_F(OperationOnUnits, IsJudgedByTheReportsOfAProviderWithoutAnyProcess) {
    CMOutcome pump = outcomeOf("Pump");
    pump.runs.push_back({.command = "SccCheckout", .result = 0});
    CMOutcome valve = outcomeOf("Valve", Kind::failed, "the provider's call SccCheckout failed with result -11");
    valve.runs.push_back({.command = "SccCheckout", .result = -11});
    const OperationReport report = checkOut({"Valve", "Pump"}, {pump, valve});
    EXPECT_FALSE(report.good);
    EXPECT_EQ(told(report), "Drives/Valve: failed: the provider's call SccCheckout failed with result -11\n"
                            "Drives/Pump: checked out, file unchanged, RW\n");
}
TEST_F(OperationOnUnits, IsGoodIfEachUnitIsDone) {
    EXPECT_TRUE(checkOut({"Valve", "Pump"}, {outcomeOf("Valve"), outcomeOf("Pump")}).good);
}
TEST_F(OperationOnUnits, IsNotGoodIfTheEntryAnswersZero) {
    EXPECT_FALSE(operate({"Pump"}, {.wording = checkedOut}, {outcomeOf("Pump")}, 0).good);
}
TEST_F(OperationOnUnits, SkipsAUnitForWhichTheUserDeclined) {
    const ItemResult result = checkOutPump(outcomeOf("Pump", Kind::declined, "the answer was No"));
    EXPECT_EQ(result.outcome, Outcome::skipped);
    EXPECT_EQ(result.reason, "the answer was No");
}
TEST_F(OperationOnUnits, FailsAUnitOfEachKindThatWasNotDone) {
    for (const Kind kind : {Kind::leftOut, Kind::gone, Kind::refused, Kind::noTool, Kind::noCommand,
                            Kind::notExpanded, Kind::failed, Kind::notLoaded}) {
        const ItemResult result = checkOutPump(outcomeOf("Pump", kind, "a reason"));
        EXPECT_EQ(result.outcome, Outcome::failed) << static_cast<int>(kind);
        EXPECT_EQ(result.reason, "a reason") << static_cast<int>(kind);
    }
}
TEST_F(OperationOnUnits, CountsAUnitForWhichThereWasNothingToDoAsDone) {
    EXPECT_EQ(checkOutPump(outcomeOf("Pump", Kind::nothingToDo)).outcome, Outcome::done);
}
TEST_F(OperationOnUnits, FailsAUnitThatIsNotReported) {
    const OperationReport report = checkOut({"Pump", "Valve"}, {outcomeOf("Valve")});
    EXPECT_EQ(report.items[0].outcome, Outcome::failed);
    EXPECT_EQ(report.items[0].reason, "nothing was done for it");
    EXPECT_EQ(report.items[1].outcome, Outcome::done);
}
TEST_F(OperationOnUnits, GivesTheReasonOfTheCallToTheUnitsThatAreNotReported) {
    CMOutcome call;
    call.kind = Kind::noTool;
    call.reason = "no tool is selected";
    const OperationReport report = checkOut({"Pump"}, {call});
    EXPECT_EQ(report.items[0].reason, "no tool is selected");
    EXPECT_FALSE(report.good);
}
TEST_F(OperationOnUnits, IsNotGoodIfACommandForADirectoryFailed) {
    CMOutcome ofDirectory;
    ofDirectory.kind = Kind::failed;
    ofDirectory.file = "/plant";
    const OperationReport report = checkOut({"Pump"}, {outcomeOf("Pump"), ofDirectory});
    EXPECT_EQ(report.items[0].outcome, Outcome::done);
    EXPECT_FALSE(report.good);
}
TEST_F(OperationOnUnits, TellsTheFaultOfADirectoryIfEachUnitHasItsOwnOutcome) {
    CMOutcome ofDirectory;
    ofDirectory.kind = Kind::failed;
    ofDirectory.file = "/plant";
    ofDirectory.reason = "the tool failed with exit status 3";
    checkOut({"Pump"}, {outcomeOf("Pump"), ofDirectory});
    EXPECT_THAT(err.str(), HasSubstr("/plant: the tool failed with exit status 3"));
}
TEST_F(OperationOnUnits, LooksForTheFileOfAUnitThatIsReportedWithoutOne) {
    CMOutcome gone = outcomeOf("Pump", Kind::gone, "a reason");
    gone.file = "";
    gone.fileExists = false;
    const ItemResult result = checkOutPump(gone);
    EXPECT_TRUE(result.after.exists);
    EXPECT_FALSE(result.fileChanged);
}
TEST_F(OperationOnUnits, TakesTheStateOfTheFileFromTheReport) {
    CMOutcome outcome = outcomeOf("Pump");
    outcome.fileWritable = false;
    const Operation lock{.wording = checkedOut, .expected = {.writable = true}};
    EXPECT_EQ(operate({"Pump"}, lock, {outcome}).items[0].reason, "the file is still read-only");
    outcome.fileWritable = true;
    EXPECT_EQ(operate({"Pump"}, lock, {outcome}).items[0].outcome, Outcome::done);
    outcome.fileExists = false;
    EXPECT_EQ(operate({"Pump"}, lock, {outcome}).items[0].reason, "the tool left no file");
}
TEST_F(OperationOnUnits, TellsOfAFileThatChangedAndAUnitThatWasReadAgainAsReported) {
    CMOutcome outcome = outcomeOf("Pump");
    outcome.fileChanged = true;
    EXPECT_EQ(told(checkOut({"Pump"}, {outcome})), "Drives/Pump: checked out, file changed, RW\n");
    outcome.reload = CMOutcome::Reload::content;
    EXPECT_THAT(told(checkOut({"Pump"}, {outcome})), HasSubstr("file changed, RW, reloaded\n"));
}
TEST_F(OperationOnUnits, ReadsAgainWhatTheToolHasChangedWhereTheLibraryLeavesThatToItsCaller) {
    CMOutcome changed = outcomeOf("Pump");
    changed.runs.push_back({.command = "get Pump"});
    changed.fileChanged = true;
    CMOutcome same = outcomeOf("Valve");
    same.runs.push_back({.command = "get Valve"});
    const OperationReport report =
        operate({"Pump", "Valve"}, {.wording = checkedOut, .reload = Reload::changed}, {changed, same});
    EXPECT_TRUE(report.items[0].reloaded);
    EXPECT_FALSE(report.items[1].reloaded);
}
TEST_F(OperationOnUnits, KeepsWhatTheToolWroteForAnOperationThatShowsIt) {
    CMOutcome outcome = outcomeOf("Pump");
    outcome.runs.push_back({.command = "log Pump", .output = "revision 1.1\n"});
    EXPECT_EQ(operate({"Pump"}, {.wording = checkedOut, .showsOutput = true}, {outcome}).items[0].output,
              "revision 1.1\n");
    EXPECT_EQ(checkOutPump(outcome).output, "");
}
TEST_F(OperationOnUnits, LeavesTheObserverThatWasSetBefore) {
    CMOutcomeObserver *const before = CMFacade::outcomeObserver();
    checkOutPump(outcomeOf("Pump"));
    EXPECT_EQ(CMFacade::outcomeObserver(), before);
}
