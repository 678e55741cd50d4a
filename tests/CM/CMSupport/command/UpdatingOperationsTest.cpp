// Tests check in, recursive check in, lock and unlock: the state in the archive changes, then header and mode
// follow.
#include "CM/CMSupport/command/CMCheckIn.h"
#include "CM/CMSupport/command/CMLockItem.h"
#include "CM/CMSupport/command/CMRecCheckIn.h"
#include "CM/CMSupport/command/CMUnLockItem.h"
#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMLog.h"
#include "CM/CMSupport/core/CMMode.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

#include <stdexcept>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

enum class Guard { none, checkIn, inspect };

struct Row {
    std::string name;
    int (*run)(CMUnitList &, CMArgumentList &, CMDiagnosticList &, bool);
    const CString *property;
    std::string verb; ///< what the template begins with here
    std::string source;
    std::string before;
    std::string after;
    Guard guard;
    bool saves;
};

template <class OPERATION>
int runOf(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) {
    return OPERATION()(units, args, diags, hybrid);
}

void PrintTo(const Row &row, std::ostream *out) { *out << row.name; }

const Row rows[] = {
    {"CheckIn", runOf<CMCheckIn>, &IPN::CMCheckIn, "ci", "../CM/CMSupport/CheckIn",
     "Executing the following command to check in the file: ", "Check in command returned the following: ",
     Guard::checkIn, true},
    {"RecCheckIn", runOf<CMRecCheckIn>, &IPN::CMCheckIn, "ci", "../CM/CMSupport/RecCheckIn",
     "Executing the following command to recursively check in the file(s): ",
     "Recursive check in command returned the following: ", Guard::checkIn, true},
    {"LockItem", runOf<CMLockItem>, &IPN::CMLockItem, "lock", "../CM/CMSupport/LockItem",
     "Executing the following command to lock the file: ", "Lock command returned the following: ", Guard::none,
     false},
    {"UnLockItem", runOf<CMUnLockItem>, &IPN::CMUnLockItem, "unlock", "../CM/CMSupport/UnLockItem",
     "Executing the following command to unlock the file: ", "Unlock command returned the following: ",
     Guard::inspect, false},
};

class UpdatingOperation : public CheckOutFixture, public testing::WithParamInterface<Row> {
  protected:
    UpdatingOperation() {
        for (const Row &row : rows) {
            setToolProperty(*row.property, row.verb + " $Unit");
        }
    }
    static const Row &row() { return GetParam(); }
    void setTemplate(const std::string &rest) { setToolProperty(*row().property, row().verb + rest); }
    int run(CMUnitList &given, bool hybrid = false) { return row().run(given, args, diags, hybrid); }
    template <class... UNITS> int runOn(UNITS &...given) {
        units = list(&given...);
        return run(units);
    }
    [[nodiscard]] std::string command(const std::string &file) const { return row().verb + " " + file; }

    CMUnitList units;
};

std::string rowName(const testing::TestParamInfo<Row> &info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(Each, UpdatingOperation, testing::ValuesIn(rows), rowName);

// --- The steps of a good run.

TEST_P(UpdatingOperation, RunsAndUpdatesHeaderThenModeInThisOrder) {
    auto &pump = host.addUnit("Pump");
    const std::string file = pump.getFullFileName().str();
    EXPECT_EQ(runOn(pump), 1);
    const std::string log = "log 4 " + row().source + ": ";
    std::vector<std::string> expected{log + row().before + command("Pump.ocl"),
                                      "run " + command("Pump.ocl"),
                                      log + row().after,
                                      log + "Updating CM Header for unit " + file,
                                      "update header Pump 1",
                                      log + "Updating Mode for unit " + file,
                                      "update mode Pump "}; // of an empty mode text
    if (row().saves) {
        expected.insert(expected.begin(), "save model");
    }
    EXPECT_EQ(calls(), expected);
    EXPECT_TRUE(diags.IsEmpty());
    expectNothingIsLeft();
}

TEST_P(UpdatingOperation, LogsTheToolsOutput) {
    host.worker.run = [](const CString &) { return recording::ToolRun{{"done\n"}, {}, 0}; };
    runOn(host.addUnit("Pump"));
    EXPECT_THAT(logTexts(), Contains(row().after + "done\n"));
}

TEST_P(UpdatingOperation, AToolThatPrintsAnErrorCountsAsAGoodRun) {
    setToolProperty("OperationErrorPattern", "cannot");
    host.worker.run = [](const CString &) { return recording::ToolRun{{}, {"cannot do it\n"}, 0}; };
    EXPECT_EQ(runOn(host.addUnit("Pump")), 1);
    EXPECT_THAT(calls(), Contains("update header Pump 1"));
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_P(UpdatingOperation, AHeaderThatCannotBeReadIsNoFailure) {
    auto &pump = host.addUnit("Pump");
    pump.headerReadable = false;
    EXPECT_EQ(runOn(pump), 1);
    EXPECT_EQ(calls().back(), "update mode Pump ");
}

TEST_P(UpdatingOperation, ReloadsNothingAndTouchesNoList) {
    auto &pump = host.addUnit("Pump");
    units = list(&pump, nullptr, &pump);
    EXPECT_EQ(run(units), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(command("Pump.ocl"), command("Pump.ocl"))) << "no duplicates";
    EXPECT_THAT(entries(units), ElementsAre(&pump, nullptr, &pump));
    EXPECT_THAT(host.callsOf("reload"), IsEmpty());
    EXPECT_THAT(host.callsOf("can reload"), IsEmpty());
}

TEST_P(UpdatingOperation, UpdatesAnEmbeddedFileToo) {
    EXPECT_EQ(runOn(host.addEmbeddedFile("Notes.doc")), 1);
    EXPECT_EQ(host.callsOf("update").size(), 2U);
}

TEST_P(UpdatingOperation, SkipsANullEntryInFrontWithoutALogLine) {
    units = list(static_cast<IUnit *>(nullptr));
    EXPECT_EQ(run(units), 0);
    EXPECT_THAT(host.logLines, IsEmpty());
    units.AddTail(&host.addUnit("Pump"));
    EXPECT_EQ(run(units), 1);
    EXPECT_EQ(host.logLines.size(), 4U);
}

TEST_P(UpdatingOperation, NeverAsksAboutAWritableFile) {
    auto &pump = host.addUnit("Pump");
    makeWritable(pump);
    EXPECT_EQ(runOn(pump), 1);
    EXPECT_EQ(lookUpOf("AskOnCheckoutReadWrite"), -1);
}

// --- The command.

TEST_P(UpdatingOperation, ResolvesTheCallersArgumentsAndLeavesTheListAsItWas) {
    setToolProperty(IPN::CMReadWrite, "rw");
    setTemplate(" $mode $label $log $Unit");
    CMMode mode(CMMode::readWrite);
    CMLabel label("v 1");
    CMLog comment("two words");
    args.AddTail(&mode);
    args.AddTail(&label);
    args.AddTail(&comment);
    EXPECT_EQ(runOn(host.addUnit("Pump")), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(command("rw \"v 1\" 'two words' Pump.ocl")));
    EXPECT_EQ(args.GetCount(), 3);
    EXPECT_EQ(args.GetHead(), &mode);
    EXPECT_EQ(args.GetTail(), &comment);
    args.RemoveAll();
}

TEST_P(UpdatingOperation, AnArgumentOfTheCallerWinsOverItsOwn) {
    class Given : public CMArgument {
      public:
        [[nodiscard]] int isNamed(const CString &name) const override {
            return name.CompareNoCase("Unit") == 0 || name.CompareNoCase("archive") == 0 ? 1 : 0;
        }
        CString substitute(const CString &name) override { return "my" + name; }
    };
    setTemplate(" $Unit $archive");
    Given given;
    args.AddTail(&given);
    EXPECT_EQ(runOn(host.addUnit("Pump")), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(command("myUnit myarchive")));
    args.RemoveAll();
}

TEST_P(UpdatingOperation, SelectsTheArchiveOfEachUnit) {
    setTemplate(" $archive");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    setToolProperty(IPN::CMArchiveSelection, "Directory");
    auto &pump = host.addUnit("Pump");
    pump.batchArchive = "/archives/pump";
    auto &valve = host.addUnit("Valve");
    valve.batchArchive = "/archives/valve";
    EXPECT_EQ(runOn(pump, valve), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(command("/archives/pump"), command("/archives/valve")));
}

TEST_P(UpdatingOperation, AUnitWithoutAnArchiveTakesTheMainOneWhichIsThatOfTheUnitBefore) {
    setTemplate(" [$archive]");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    setToolProperty(IPN::CMArchiveSelection, "File");
    auto &pump = host.addUnit("Pump");
    pump.batchArchive = "/archives/pump";
    EXPECT_EQ(runOn(pump, host.addUnit("Valve")), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(command("[/archives/pump]"), command("[/archives/pump]")));
}

TEST_P(UpdatingOperation, LeavesTheArchiveAloneWhereThereIsOneForTheProject) {
    setTemplate(" $archive");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    auto &pump = host.addUnit("Pump");
    pump.batchArchive = "/archives/pump";
    EXPECT_EQ(runOn(pump), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(command("/archives/plant")));
}

TEST_P(UpdatingOperation, ExpandsAndAsksForTheToolWithoutTheHybridFlagWhateverItWasPassed) {
    useProvider();
    host.setToolDefault("Basalt", *row().property, "hybrid $Unit");
    host.setToolDefault("SCC", *row().property, row().verb + " $Unit");
    units = list(&host.addUnit("Pump"));
    EXPECT_EQ(run(units, true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(command("Pump.ocl")));
    host.setTool("None");
    EXPECT_EQ(run(units, true), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

// --- Failures.

TEST_P(UpdatingOperation, WithoutAToolGivesOneDiagnosticAndSavesNothing) {
    host.setTool("None");
    EXPECT_EQ(runOn(host.addUnit("Pump"), host.addUnit("Valve")), 0);
    ASSERT_EQ(diags.GetCount(), 1);
    EXPECT_EQ(diags.GetHead().getResult(), 0);
    EXPECT_THAT(diags.GetHead().getDiagnostic().str(), HasSubstr("No configuration management tool"));
    EXPECT_THAT(calls(), IsEmpty());
    expectNothingIsLeft();
}

TEST_P(UpdatingOperation, WithoutATemplateLogsNothingAndGivesNoDiagnostic) {
    host.setTool("PlainTool"); // which has no properties at all
    EXPECT_EQ(runOn(host.addUnit("Pump")), 0);
    EXPECT_THAT(host.logLines, IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_THAT(host.callsOf("update"), IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_P(UpdatingOperation, ARunThatCouldNotBeMadeUpdatesNothing) {
    breakExecute();
    EXPECT_EQ(runOn(host.addUnit("Pump")), 0);
    EXPECT_THAT(logTexts(), ElementsAre(row().before + command("Pump.ocl"), row().after));
    EXPECT_THAT(host.callsOf("update"), IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
    expectNothingIsLeft();
}

TEST_P(UpdatingOperation, TheLoopGoesOnAfterAFailureAndOnlyTheLastUnitDecides) {
    setTemplate(" $extra $Unit");
    ExtraArgument extra;
    extra.answers = {false, true, true, false};
    args.AddTail(&extra);
    EXPECT_EQ(runOn(host.addUnit("Pump"), host.addUnit("Valve")), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre(command("x Valve.ocl")));
    EXPECT_THAT(host.callsOf("update header"), ElementsAre("update header Valve 1"));
    EXPECT_EQ(runOn(host.addUnit("Tank"), host.addUnit("Pipe")), 0);
    EXPECT_THAT(host.callsOf("update header"), ElementsAre("update header Valve 1", "update header Tank 1"));
    args.RemoveAll();
}

TEST_P(UpdatingOperation, AnExceptionOfTheHostLeavesTheArgumentsAsTheyWere) {
    auto &pump = host.addUnit("Pump");
    pump.onUpdateHeader = [](recording::UnitState &) { throw std::runtime_error("host"); };
    EXPECT_THROW(runOn(pump), std::runtime_error);
    expectNothingIsLeft();
}

// --- Saving.

TEST_P(UpdatingOperation, SavesOnceForTheBatchOrNotAtAllWhateverThePropertySays) {
    for (const char *const wanted : {"False", "True"}) {
        setToolProperty(IPN::CMSaveOnCheckOut, wanted);
        host.clearRecords();
        EXPECT_EQ(runOn(host.addUnit("Pump"), host.addUnit("Valve")), 1);
        EXPECT_EQ(host.callsOf("save model").size(), row().saves ? 1U : 0U);
    }
}

TEST_P(UpdatingOperation, GoesOnWithoutASaveCallback) {
    CMFacade::saveCallbackFunc() = nullptr;
    EXPECT_EQ(runOn(host.addUnit("Pump")), 1);
}

TEST_P(UpdatingOperation, AnEmptyListSavesNothingAndRunsNothing) {
    EXPECT_EQ(run(units), 0);
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_P(UpdatingOperation, AListOfNothingButNullIsSavedForAllTheSame) {
    units = list(static_cast<IUnit *>(nullptr));
    EXPECT_EQ(run(units), 0);
    EXPECT_EQ(host.callsOf("save model").size(), row().saves ? 1U : 0U);
}

// --- The guard of the project file.

TEST_P(UpdatingOperation, ExpandsBeforeTheGuardStarts) {
    setTemplate(" all");
    units = list(&project());
    EXPECT_EQ(run(units), 1);
    EXPECT_LT(lookUpOf(*row().property), lookUpOf("SupportTreeRepository"));
}

TEST_P(UpdatingOperation, KeepsTheProjectFileInStepAsItsGuardDoes) {
    useOldLayout();
    setTemplate(" all");
    std::string given = "nothing";
    host.worker.run = [this, &given](const CString &) {
        if (exists(scratch / "Plant.ory")) {
            given = read(scratch / "Plant.ory");
        }
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    units = list(&project());
    EXPECT_EQ(run(units), 1);
    switch (row().guard) {
    case Guard::checkIn: // the tool gets the file, and its result is copied back
        EXPECT_EQ(given, "old");
        EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "new");
        EXPECT_FALSE(exists(scratch / "Plant.ory"));
        break;
    case Guard::inspect: // the tool gets nothing, and its result is removed
        EXPECT_EQ(given, "nothing");
        EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old");
        EXPECT_FALSE(exists(scratch / "Plant.ory"));
        break;
    case Guard::none:
        EXPECT_EQ(given, "nothing");
        EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old");
        EXPECT_EQ(read(scratch / "Plant.ory"), "new");
        break;
    }
}

TEST_P(UpdatingOperation, CommitsTheGuardBeforeTheUnitIsBroughtIntoLine) {
    useOldLayout();
    setTemplate(" all");
    host.worker.run = [this](const CString &) {
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    std::vector<std::string> seen;
    const auto look = [this, &seen] {
        const bool isWithTheTool = exists(scratch / "Plant.ory");
        seen.push_back(read(unitsDirectory() / "Plant.ory") + (isWithTheTool ? ", with the tool" : ""));
    };
    project().onUpdateHeader = [&look](recording::UnitState &) { look(); };
    project().onUpdateMode = [&look](recording::UnitState &, const CString &) { look(); };
    units = list(&project());
    EXPECT_EQ(run(units), 1);
    const std::string expected = row().guard == Guard::checkIn   ? "new"
                                 : row().guard == Guard::inspect ? "old"
                                                                 : "old, with the tool";
    EXPECT_THAT(seen, ElementsAre(expected, expected));
}

TEST_P(UpdatingOperation, AGuardIsStartedAlsoAfterAFailedExpansionAndRollsBack) {
    useOldLayout();
    setTemplate(" $nowhere");
    write(scratch / "Plant.ory", "of the tool");
    units = list(&project());
    EXPECT_EQ(run(units), 0);
    EXPECT_EQ(exists(scratch / "Plant.ory"), row().guard == Guard::none);
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old");
}

} // namespace
