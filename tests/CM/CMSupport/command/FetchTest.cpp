// Tests fetch and history of units.
#include "CM/CMSupport/command/CMFetch.h"
#include "CM/CMSupport/command/CMHistory.h"

#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMTargetFile.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class Fetch : public CheckOutFixture {
  protected:
    Fetch() { setToolProperty(IPN::CMFetch, "get $Unit"); }
    int fetch(CMUnitList &units, bool hybrid = false) { return CMFetch()(units, args, diags, hybrid); }
    int fetchOne(IUnit &unit, bool hybrid = false) {
        auto units = list(&unit);
        return fetch(units, hybrid);
    }
    void toolReplacesTheProjectFile() {
        host.worker.run = [this](const CString &) {
            write(scratch / "Plant.ory", "new");
            return recording::ToolRun{};
        };
    }
};

TEST_F(Fetch, RunsOneCommandAUnitAndReloadsAndSavesNothing) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    auto units = list(&host.addUnit("Pump"), &host.addUnit("Valve"));
    const auto before = entries(units);
    EXPECT_EQ(fetch(units), 1);
    const std::string log = "log 4 ../CM/CMSupport/Fetch: ";
    EXPECT_THAT(calls(), ElementsAre(log + "Executing the following command to fetch the file: get Pump.ocl",
                                     "run get Pump.ocl", log + "Fetch command returned the following: ",
                                     log + "Executing the following command to fetch the file: get Valve.ocl",
                                     "run get Valve.ocl", log + "Fetch command returned the following: "));
    EXPECT_EQ(entries(units), before);
    expectNothingIsLeft();
}

TEST_F(Fetch, LogsTheToolsOutput) {
    host.worker.run = [](const CString &) { return recording::ToolRun{{"rev 1.2\n"}, {}, 0}; };
    fetchOne(host.addUnit("Pump"));
    EXPECT_THAT(logTexts(), Contains("Fetch command returned the following: rev 1.2\n"));
}

TEST_F(Fetch, SkipsNullTakesDuplicatesAndSelectsNoArchive) {
    setToolProperty(IPN::CMFetch, "get $archive $Unit");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    setToolProperty(IPN::CMArchiveSelection, "Directory");
    auto &pump = host.addUnit("Pump");
    pump.batchArchive = "/archives/pump";
    auto units = list(nullptr, &pump, &pump);
    EXPECT_EQ(fetch(units), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("get /archives/plant Pump.ocl", "get /archives/plant Pump.ocl"));
}

TEST_F(Fetch, TheCallersArgumentsReachTheTemplate) {
    setToolProperty(IPN::CMFetch, "get $label $Unit $targetDir");
    CMLabel label("R1");
    CMTargetFile target("/tmp/there");
    args.AddTail(&label);
    args.AddTail(&target);
    fetchOne(host.addUnit("Pump"));
    EXPECT_THAT(host.worker.commands, ElementsAre("get R1 Pump.ocl /tmp/there"));
    EXPECT_EQ(args.GetCount(), 2);
    args.RemoveAll();
}

TEST_F(Fetch, CommitsTheGuardAfterAGoodRun) {
    useOldLayout();
    toolReplacesTheProjectFile();
    EXPECT_EQ(fetchOne(project()), 1);
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "new");
}

TEST_F(Fetch, GuardsAsAFetchWhichCopiesNothingForTheTool) {
    useOldLayout();
    host.worker.run = [this](const CString &) {
        EXPECT_FALSE(exists(scratch / "Plant.ory"));
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    EXPECT_EQ(fetchOne(project()), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("get Plant.ory"));
    EXPECT_FALSE(exists(scratch / "Plant.ory")) << "moved, not left there as by a mere inspection";
}

TEST_F(Fetch, StartsTheGuardAfterAFailedExpansionAndRollsItBack) {
    useOldLayout();
    write(scratch / "Plant.ory", "the tool's");
    setToolProperty(IPN::CMFetch, "get $unknown");
    EXPECT_EQ(fetchOne(project()), 0);
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old");
    EXPECT_FALSE(exists(scratch / "Plant.ory")) << "rolled back";
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(Fetch, ARunThatFailsRollsTheGuardBack) {
    useOldLayout();
    host.worker.run = [this](const CString &) {
        write(scratch / "Plant.ory", "new");
        // The directory in which the run started is gone, so the run can't return to it.
        const auto gone = scratch / "gone";
        return remove(gone), recording::ToolRun{};
    };
    std::filesystem::create_directory(scratch / "gone");
    const auto home = std::filesystem::current_path();
    std::filesystem::current_path(scratch / "gone");
    EXPECT_EQ(fetchOne(project()), 0);
    std::filesystem::current_path(home);
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old");
    EXPECT_FALSE(exists(scratch / "Plant.ory"));
}

TEST_F(Fetch, OnlyTheLastUnitDecidesTheResult) {
    setToolProperty(IPN::CMFetch, "get $extra $Unit");
    ExtraArgument extra;
    extra.answers = {false, true, true, false};
    args.AddTail(&extra);
    auto units = list(&host.addUnit("Pump"), &host.addUnit("Valve"));
    EXPECT_EQ(fetch(units), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("get x Valve.ocl"));
    EXPECT_EQ(fetch(units), 0);
    args.RemoveAll();
}

TEST_F(Fetch, WithAnEmptyTemplateLogsTwoLinesRunsNothingAndGivesOne) {
    setToolProperty(IPN::CMFetch, "");
    EXPECT_EQ(fetchOne(host.addUnit("Pump")), 1);
    EXPECT_THAT(logTexts(), ElementsAre("Executing the following command to fetch the file: ",
                                        "Fetch command returned the following: "));
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(Fetch, AnEmptyListGivesNothing) {
    CMUnitList none;
    EXPECT_EQ(fetch(none), 0);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(Fetch, WithoutAToolGivesOneDiagnostic) {
    host.setTool("None");
    EXPECT_EQ(fetchOne(host.addUnit("Pump")), 0);
    ASSERT_EQ(diags.GetCount(), 1);
    EXPECT_EQ(diags.GetHead().getResult(), 0);
    EXPECT_FALSE(diags.GetHead().getDiagnostic().IsEmpty());
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(Fetch, InHybridModePassesTheToolCheckWithoutReadingTheTool) {
    useProvider();
    host.setTool("None");
    host.setToolDefault("Basalt", IPN::CMFetch, "hybrid get $Unit");
    auto &pump = host.addUnit("Pump");
    host.lookups.clear();
    EXPECT_EQ(fetchOne(pump, true), 1);
    EXPECT_EQ(lookUpOf(IPN::CMTool), -1);
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(Fetch, InHybridModeTheTemplateIsTheOneOfTheProvidersName) {
    useProvider();
    host.setToolDefault("Basalt", IPN::CMFetch, "hybrid get $Unit");
    host.setToolDefault("SCC", IPN::CMFetch, "plain get $Unit");
    auto &pump = host.addUnit("Pump");
    fetchOne(pump, true);
    fetchOne(pump, false);
    EXPECT_THAT(host.worker.commands, ElementsAre("hybrid get Pump.ocl", "plain get Pump.ocl"));
}

class History : public CheckOutFixture {
  protected:
    History() { setToolProperty("History", "log $Unit"); }
    int history(CMUnitList &units, bool hybrid = false) { return CMHistory()(units, args, diags, hybrid); }
};

TEST_F(History, RunsOneCommandAUnit) {
    auto units = list(&host.addUnit("Pump"), nullptr, &host.addUnit("Valve"));
    EXPECT_EQ(history(units), 1);
    const std::string log = "log 4 ../CM/CMSupport/History: ";
    const std::string before = log + "Executing the following command to show the history of the file: log ";
    const std::string after = log + "History command returned the following: ";
    EXPECT_THAT(calls(), ElementsAre(before + "Pump.ocl", "run log Pump.ocl", after, before + "Valve.ocl",
                                     "run log Valve.ocl", after));
    EXPECT_EQ(units.GetCount(), 3);
    expectNothingIsLeft();
}

TEST_F(History, TheAnswerIsReadInTheOutputWindow) {
    host.worker.run = [](const CString &) { return recording::ToolRun{{"1.2 ann\n", "1.1 bob\n"}, {}, 0}; };
    auto units = list(&host.addUnit("Pump"));
    EXPECT_EQ(history(units), 1);
    EXPECT_THAT(shown.str(), HasSubstr("1.2 ann\n1.1 bob\n"));
    EXPECT_THAT(logTexts(), Contains("History command returned the following: 1.2 ann\n1.1 bob\n"));
}

TEST_F(History, OfAUnitThatTheToolDoesNotKnowShowsTheErrorAndCountsAsRun) {
    host.worker.run = [](const CString &) { return recording::ToolRun{{}, {"Pump.ocl: no such file\n"}, 0}; };
    auto units = list(&host.addUnit("Pump"));
    EXPECT_EQ(history(units), 1);
    EXPECT_THAT(shown.str(), HasSubstr("Pump.ocl: no such file\n"));
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(History, WithAnEmptyTemplateLogsTwoLinesRunsNothingAndGivesOne) {
    setToolProperty("History", "");
    auto units = list(&host.addUnit("Pump"));
    EXPECT_EQ(history(units), 1);
    EXPECT_THAT(logTexts(), ElementsAre("Executing the following command to show the history of the file: ",
                                        "History command returned the following: "));
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(History, WithoutATemplateGivesNothingAndLogsNothing) {
    auto units = list(&host.addUnit("Pump"));
    host.setTool("Other");
    EXPECT_EQ(history(units), 0);
    EXPECT_THAT(host.logLines, IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(History, TouchesNoProjectFileOfTheTools) {
    useOldLayout();
    write(scratch / "Plant.ory", "the tool's");
    auto units = list(&project());
    EXPECT_EQ(history(units), 1);
    EXPECT_EQ(read(scratch / "Plant.ory"), "the tool's");
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old");
}

TEST_F(History, IgnoresTheHybridFlagInTheTemplateAndInTheToolCheck) {
    useProvider();
    host.setToolDefault("Basalt", "History", "hybrid log $Unit");
    host.setToolDefault("SCC", "History", "log $Unit");
    auto units = list(&host.addUnit("Pump"));
    EXPECT_EQ(history(units, true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("log Pump.ocl"));
    host.setTool("None");
    EXPECT_EQ(history(units, true), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

TEST_F(History, OnlyTheLastUnitDecidesTheResult) {
    setToolProperty("History", "log $extra $Unit");
    ExtraArgument extra;
    extra.answers = {false, true, true, false};
    args.AddTail(&extra);
    auto units = list(&host.addUnit("Pump"), &host.addUnit("Valve"));
    EXPECT_EQ(history(units), 1);
    EXPECT_EQ(history(units), 0);
    args.RemoveAll();
}

} // namespace
