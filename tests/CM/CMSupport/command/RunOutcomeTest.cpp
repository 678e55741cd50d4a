// Tests what an outcome reports about the run of a command and its file.
#include "CM/CMSupport/command/CMCheckIn.h"
#include "CM/CMSupport/command/CMFetch.h"
#include "tests/CM/CMSupport/command/OutcomeFixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Kind = CMOutcome::Kind;
using Match = CMToolRun::Match;

namespace {

TEST_F(Outcome, IsFailedByTheExitStatusWithTheFirstLineOfTheErrors) {
    toolDoes([](const CString &) {
        return recording::ToolRun{{}, {"\n", "  no such file  \n", "more\n"}, 0, {RunEnd::Kind::exited, 3, {}}};
    });
    EXPECT_EQ(runOn<CMCheckIn>(host.addUnit("Pump")), 1) << "the operation goes on as after a good run";
    EXPECT_EQ(seen.last().kind, Kind::failed);
    EXPECT_EQ(reason(), "the tool failed with exit status 3:   no such file");
    EXPECT_EQ(seen.last().runs[0].end.code, 3);
    EXPECT_EQ(seen.last().runs[0].errors, "\n  no such file  \nmore\n");
}

TEST_F(Outcome, SaysHowAToolEndedThatDidNotExit) {
    using enum RunEnd::Kind;
    const std::pair<RunEnd, const char *> rows[] = {
        {{exited, 127, {}}, "not installed or not on the PATH (exit status 127)"},
        {{killedBySignal, 11, "Segmentation fault"}, "the tool was killed by signal 11 (Segmentation fault)"},
        {{timedOut, 0, {}}, "exceeded its time limit"},
        {{interrupted, 0, {}}, "the tool was ended because of an interruption"},
        {{withheld, 0, {}}, "interrupted before its turn"},
        {{notStarted, ENOENT, "No such file"}, "the tool is not installed or not on the PATH"},
        {{notStarted, EACCES, "Permission denied"}, "the tool could not be started: Permission denied"}};
    for (const auto &[end, text] : rows) {
        toolEnds(end);
        runOn<CMCheckIn>(host.addUnit("Pump"));
        EXPECT_EQ(seen.last().kind, Kind::failed) << text;
        EXPECT_THAT(reason(), HasSubstr(text));
    }
}

TEST_F(Outcome, KnowsATimeOutAlsoOfAHostThatDoesNotSayHowARunEnded) {
    toolDoes([](const CString &) { return recording::ToolRun{{"half"}, {}, WAIT_TIMEOUT, {}}; });
    runOn<CMCheckIn>(host.addUnit("Pump"));
    EXPECT_EQ(seen.last().runs[0].end.kind, RunEnd::Kind::timedOut);
    EXPECT_EQ(seen.last().runs[0].output, "half");
}

TEST_F(Outcome, IsDoneWhereTheHostDoesNotSayHowARunEnded) {
    toolEnds({});
    runOn<CMCheckIn>(host.addUnit("Pump"));
    EXPECT_EQ(seen.last().kind, Kind::done);
}

TEST_F(Outcome, HoldsWhatTheToolWroteOnBothChannels) {
    toolDoes([](const CString &) { return recording::ToolRun{{"one\n", "two\n"}, {"careful\n"}, 0, {}}; });
    runOn<CMCheckIn>(host.addUnit("Pump"));
    EXPECT_EQ(seen.last().runs[0].output, "one\ntwo\n") << "the operation itself drops it beside errors";
    EXPECT_EQ(seen.last().runs[0].errors, "careful\n");
    EXPECT_EQ(seen.last().kind, Kind::done);
}

TEST_F(Outcome, HoldsOnlyWhatTheToolWroteForThisItem) {
    toolDoes([](const CString &command) {
        return recording::ToolRun{{}, {command == "ci Pump.ocl" ? "cannot do Pump\n" : "all is well\n"}, 0, {}};
    });
    setToolProperty("OperationErrorPattern", "cannot");
    runOn<CMCheckIn>(host.addUnit("Pump"), host.addUnit("Valve"));
    ASSERT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl failed", "Valve.ocl done"));
    EXPECT_EQ(seen.outcomes[1].runs[0].match, Match::error);
    EXPECT_EQ(seen.outcomes[2].runs[0].errors, "all is well\n");
    EXPECT_EQ(seen.outcomes[2].runs[0].match, Match::none);
    EXPECT_EQ(host.messages.shown.size(), 2U) << "the user gets a box for each all the same";
}

TEST_F(Outcome, IsFailedByTheErrorPatternAndNotByTheOneForWarnings) {
    setToolProperty("OperationErrorPattern", "fatal");
    setToolProperty("OperationWarningPattern", "hint");
    toolDoes([](const CString &) { return recording::ToolRun{{"fatal\n"}, {}, 0, {}}; });
    runOn<CMCheckIn>(host.addUnit("Pump"));
    EXPECT_EQ(seen.last().kind, Kind::failed);
    EXPECT_THAT(reason(), HasSubstr("reported an error"));
    toolDoes([](const CString &) { return recording::ToolRun{{"hint\n"}, {}, 0, {}}; });
    runOn<CMCheckIn>(host.addUnit("Valve"));
    EXPECT_EQ(seen.last().kind, Kind::done);
    EXPECT_EQ(seen.last().runs[0].match, Match::warning);
}

TEST_F(Outcome, IsFailedByAWorkingDirectoryThatCannotBeEntered) {
    breakExecute();
    runOn<CMCheckIn>(host.addUnit("Pump"));
    EXPECT_EQ(seen.last().kind, Kind::failed);
    EXPECT_THAT(reason(), testing::StartsWith("Cannot enter the directory"));
    EXPECT_THAT(seen.last().runs, IsEmpty());
}

TEST_F(Outcome, TellsWhetherTheFileHasChanged) {
    auto &pump = unitWithFile("Pump");
    toolDoes([&](const CString &) {
        write(pump.getFullFileName().str(), "new");
        return recording::ToolRun{};
    });
    runOn<CMFetch>(pump);
    EXPECT_FALSE(seen.last().fileChanged) << "without a template nothing ran";
    setToolProperty(IPN::CMFetch, "get $Unit");
    runOn<CMFetch>(pump);
    EXPECT_TRUE(seen.last().fileChanged);
    runOn<CMFetch>(pump);
    EXPECT_FALSE(seen.last().fileChanged);
    toolDoes([&](const CString &) {
        std::filesystem::remove(pump.getFullFileName().str());
        return recording::ToolRun{};
    });
    runOn<CMFetch>(pump);
    EXPECT_TRUE(seen.last().fileChanged);
    EXPECT_FALSE(seen.last().fileExists);
}

TEST_F(Outcome, TellsWhetherTheFileIsWritable) {
    auto &pump = unitWithFile("Pump");
    const std::filesystem::path file = pump.getFullFileName().str();
    runOn<CMCheckIn>(pump);
    EXPECT_TRUE(seen.last().fileWritable);
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    runOn<CMCheckIn>(pump);
    EXPECT_FALSE(seen.last().fileWritable);
}

} // namespace
