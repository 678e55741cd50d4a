// Tests the parts of an outcome that are the same for all command operations.
#include "CM/CMSupport/command/CMCheckIn.h"
#include "CM/CMSupport/command/CMFetch.h"
#include "tests/CM/CMSupport/command/OutcomeFixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Kind = CMOutcome::Kind;

namespace {

TEST_F(Outcome, NamesTheUnitItsFileAndTheCommand) {
    auto &pump = unitWithFile("Pump");
    runOn<CMCheckIn>(pump);
    ASSERT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl done"));
    const CMOutcome &outcome = seen.last();
    EXPECT_EQ(outcome.unit, &pump);
    EXPECT_EQ(outcome.unitNow, &pump);
    EXPECT_EQ(outcome.item, nullptr);
    EXPECT_EQ(outcome.file, pump.getFullFileName());
    EXPECT_EQ(outcome.property, IPN::CMCheckIn);
    EXPECT_EQ(outcome.reason, "");
    ASSERT_EQ(outcome.runs.size(), 1U);
    EXPECT_EQ(outcome.runs[0].command, "ci Pump.ocl");
    EXPECT_TRUE(outcome.fileExists);
    EXPECT_FALSE(outcome.fileChanged);
}

TEST_F(Outcome, ComesOneByOneInTheOrderOfTheList) {
    runOn<CMCheckIn>(host.addUnit("Valve"), host.addUnit("Pump"), host.addUnit("Tank"));
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Valve.ocl done", "Pump.ocl done", "Tank.ocl done"));
}

TEST_F(Outcome, AnItemThatTheObserverDoesNotLetBeginIsLeftAloneAndNotReported) {
    auto &pump = unitWithFile("Pump");
    auto &valve = unitWithFile("Valve");
    auto &tank = unitWithFile("Tank");
    std::vector<std::string> commands;
    toolDoes([&](const CString &command) {
        commands.push_back(command.str());
        return recording::ToolRun{};
    });
    seen.mayBeginIf = [&](const CMOutcome &next) { return next.unit != &valve; };
    EXPECT_EQ(runOn<CMCheckIn>(pump, valve, tank), 1);
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl done", "Tank.ocl done"));
    EXPECT_THAT(commands, ElementsAre("ci Pump.ocl", "ci Tank.ocl"));
}

TEST_F(Outcome, IsReportedToNobodyWithoutAnObserver) {
    CMFacade::outcomeObserver() = nullptr;
    EXPECT_EQ(runOn<CMCheckIn>(unitWithFile("Pump")), 1);
    EXPECT_THAT(seen.outcomes, IsEmpty());
}

TEST_F(Outcome, OfTheModelSavedIsMissingWithoutACallback) {
    CMFacade::saveCallbackFunc() = nullptr;
    runOn<CMCheckIn>(host.addUnit("Pump"));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl done"));
}

TEST_F(Outcome, BelongsToTheUnitWhateverNamesTheCommandHolds) {
    setToolProperty(IPN::CMCheckIn, "ci -m'as in Valve.ocl' $Unit");
    auto &valve = host.addUnit("Valve");
    valve.fileName = "a$b.ocl"; // refused
    auto &pump = host.addUnit("Pump");
    runOn<CMCheckIn>(valve, pump);
    ASSERT_EQ(seen.outcomes.size(), 3U);
    EXPECT_EQ(seen.outcomes[1].unit, &valve);
    EXPECT_EQ(seen.outcomes[1].kind, Kind::refused);
    EXPECT_EQ(seen.outcomes[2].unit, &pump);
    EXPECT_EQ(seen.outcomes[2].kind, Kind::done);
}

TEST_F(Outcome, IsRefusedWithTheNameAndWhatItHolds) {
    auto &pump = host.addUnit("Pump");
    pump.fileName = "a$b.ocl";
    runOn<CMFetch>(pump);
    EXPECT_EQ(seen.last().kind, Kind::refused);
    EXPECT_THAT(reason(), testing::EndsWith("a$b.ocl can't be given to a tool: it contains the character $"));
    EXPECT_THAT(seen.last().runs, IsEmpty());
}

TEST_F(Outcome, HasNoToolWhereNoneIsSelected) {
    host.setTool("None");
    runOn<CMCheckIn>(host.addUnit("Pump"));
    EXPECT_THAT(seen.lines(), ElementsAre("noTool"));
    EXPECT_THAT(reason(), HasSubstr("No configuration management tool is selected"));
}

TEST_F(Outcome, HasNoCommandWithoutATemplateAndWithAnEmptyOne) {
    auto &pump = host.addUnit("Pump");
    runOn<CMFetch>(pump);
    EXPECT_EQ(seen.last().kind, Kind::noCommand);
    EXPECT_EQ(seen.last().property, IPN::CMFetch);
    EXPECT_EQ(reason(), "the CM tool has no command for it (property " + IPN::CMFetch.str() + ")");
    setToolProperty(IPN::CMFetch, "");
    EXPECT_EQ(runOn<CMFetch>(pump), 1);
    EXPECT_EQ(seen.last().kind, Kind::noCommand);
    EXPECT_EQ(reason(), "the CM tool has no command for it (property " + IPN::CMFetch.str() + " is empty)");
    EXPECT_THAT(seen.last().runs, IsEmpty());
}

TEST_F(Outcome, IsNotExpandedWithTheVariableThatNothingResolves) {
    setToolProperty(IPN::CMFetch, "get $Part $Unit");
    setToolProperty("Part", "-r$nobody");
    runOn<CMFetch>(host.addUnit("Pump"));
    EXPECT_EQ(seen.last().kind, Kind::notExpanded);
    EXPECT_EQ(reason(), "the command (property " + IPN::CMFetch.str() +
                            ") can't be expanded: '$nobody' could not be resolved");
}

TEST_F(Outcome, IsNotExpandedWithTheVariableOfACondition) {
    setToolProperty(IPN::CMFetch, "get ($nobody ? a : b) $Unit");
    runOn<CMFetch>(host.addUnit("Pump"));
    EXPECT_EQ(seen.last().kind, Kind::notExpanded);
    EXPECT_THAT(reason(), HasSubstr("'$nobody' could not be resolved"));
}

TEST_F(Outcome, IsNotExpandedWithTheVariableThatNoOtherWayMakesGood) {
    setToolProperty(IPN::CMFetch, "get $temp $missing");
    setToolProperty("temp", "$nobody"); // the predefined variable replaces it
    runOn<CMFetch>(host.addUnit("Pump"));
    EXPECT_THAT(reason(), HasSubstr("'$missing' could not be resolved"));
}

TEST_F(Outcome, IsNotExpandedByAPropertyThatRefersToItself) {
    setToolProperty(IPN::CMFetch, "get $Part");
    setToolProperty("Part", "$Part");
    runOn<CMFetch>(host.addUnit("Pump"));
    EXPECT_EQ(seen.last().kind, Kind::notExpanded);
    EXPECT_THAT(reason(), HasSubstr("'Part' refers to itself"));
}

} // namespace
