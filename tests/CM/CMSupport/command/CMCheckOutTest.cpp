#include "CM/CMSupport/command/CMCheckOut.h"

#include "CM/CMSupport/core/CMLabel.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

#include <stdexcept>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

class CheckOut : public CheckOutFixture {
  protected:
    int checkOut(CMUnitList &given) {
        CMCheckOut operation;
        return operation(given, args, diags, false);
    }
    template <class... UNITS> int checkOutUnits(UNITS &...given) {
        units = list(&given...);
        return checkOut(units);
    }

    CMUnitList units;
};

// --- The steps of a good run.

TEST_F(CheckOut, RunsComparesAndReloadsInThisOrder) {
    auto &pump = host.addUnit("Pump");
    const std::string file = pump.getFullFileName().str();
    EXPECT_EQ(checkOutUnits(pump), 1);
    const std::string log = "log 4 ../CM/CMSupport/CheckOut: ";
    EXPECT_THAT(calls(), ElementsAre("reloads open", "compare start " + file, "compare load before",
                                     log + "Executing the following command to check out the file: co Pump.ocl",
                                     "run co Pump.ocl",
                                     log + "Check in command returned the following: ", "compare load after",
                                     "compare -> 0", log + "Performing ATM for the file " + file,
                                     "can reload Pump flag=0 -> 1", "reload scope start", "reload Pump flag=0",
                                     "reload scope end", "compare end", "reloads close"));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
    EXPECT_TRUE(diags.IsEmpty());
    expectNothingIsLeft();
}

TEST_F(CheckOut, LogsTheToolsOutput) {
    host.worker.run = [](const CString &) { return recording::ToolRun{{"1.2 locked\n"}, {}, 0}; };
    checkOutUnits(host.addUnit("Pump"));
    EXPECT_THAT(logTexts(), Contains("Check in command returned the following: 1.2 locked\n"));
}

TEST_F(CheckOut, LogsForEachUnitItsOwnOutputAlone) {
    host.worker.run = [](const CString &command) { return recording::ToolRun{{command + "!"}, {}, 0}; };
    checkOutUnits(host.addUnit("Pump"), host.addUnit("Valve"));
    EXPECT_THAT(logTexts(), Contains("Check in command returned the following: co Valve.ocl!"));
}

TEST_F(CheckOut, EachLineOfTheLogTellsWhereItComesFrom) {
    checkOutUnits(host.addUnit("Pump"));
    ASSERT_EQ(host.logLines.size(), 3U);
    EXPECT_NE(host.logLines[0].line, host.logLines[1].line);
    EXPECT_NE(host.logLines[1].line, host.logLines[2].line);
}

TEST_F(CheckOut, ExpandsWithoutTheHybridFlagWhateverItWasPassed) {
    useProvider();
    units = list(&host.addUnit("Pump"));
    EXPECT_EQ(CMCheckOut()(units, args, diags, true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Pump.ocl"));
}

TEST_F(CheckOut, AsksForTheToolWithoutTheHybridFlagWhateverItWasPassed) {
    useProvider();
    host.setTool("None");
    units = list(&host.addUnit("Pump"));
    EXPECT_EQ(CMCheckOut()(units, args, diags, true), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

// --- The tool check.

TEST_F(CheckOut, WithoutAToolGivesOneDiagnosticAndTouchesNothing) {
    host.setTool("None");
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    auto &pump = host.addUnit("Pump");
    units = list(&pump, &pump);
    EXPECT_EQ(checkOut(units), 0);
    ASSERT_EQ(diags.GetCount(), 1);
    EXPECT_EQ(diags.GetHead().getResult(), 0);
    EXPECT_THAT(diags.GetHead().getDiagnostic().str(), HasSubstr("No configuration management tool"));
    EXPECT_EQ(units.GetCount(), 2) << "duplicates stay";
    EXPECT_THAT(calls(), IsEmpty());
    expectNothingIsLeft();
}

TEST_F(CheckOut, WithoutAToolPutsItsDiagnosticBehindThoseThatAreThere) {
    CMDiagnostic earlier(1, "earlier", static_cast<const IUnit *>(nullptr));
    diags.AddTail(earlier);
    host.setTool("None");
    checkOutUnits(host.addUnit("Pump"));
    ASSERT_EQ(diags.GetCount(), 2);
    EXPECT_EQ(diags.GetHead().getDiagnostic(), "earlier");
}

// --- Saving and the callbacks.

TEST_F(CheckOut, SavesTheModelOnceBeforeTheBatchIfThePropertyAsks) {
    host.setToolDefault("RCS", IPN::CMSaveOnCheckOut, "True");
    checkOutUnits(host.addUnit("Pump"), host.addUnit("Valve"));
    EXPECT_EQ(calls().front(), "save model");
    EXPECT_EQ(host.callsOf("save model").size(), 1U);
}

TEST_F(CheckOut, SavesWithoutBeingAskedByTheCaller) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    CMProperty::saveOnCheckout(0);
    checkOutUnits(host.addUnit("Pump"));
    EXPECT_EQ(host.callsOf("save model").size(), 1U);
    EXPECT_EQ(CMProperty::saveOnCheckout(-1), 0);
}

TEST_F(CheckOut, OpensAndClosesReloadsOnceForTheBatch) {
    checkOutUnits(host.addUnit("Pump"), host.addUnit("Valve"));
    EXPECT_EQ(host.worker.commands.size(), 2U);
    EXPECT_EQ(host.callsOf("reloads open").size(), 1U);
    EXPECT_EQ(host.callsOf("reloads close").size(), 1U);
}

TEST_F(CheckOut, DoesNotSaveWithAFalseOrAMissingProperty) {
    checkOutUnits(host.addUnit("Pump"));
    setToolProperty(IPN::CMSaveOnCheckOut, "False");
    checkOutUnits(host.addUnit("Valve"));
    EXPECT_THAT(host.callsOf("save model"), IsEmpty());
}

TEST_F(CheckOut, OnTheProviderRouteDoesNotReadWhetherToSaveUnderTheProvidersName) {
    useProvider();
    host.setToolDefault("Basalt", IPN::CMSaveOnCheckOut, "True");
    checkOutUnits(host.addUnit("Pump"));
    EXPECT_THAT(host.callsOf("save model"), IsEmpty());
}

TEST_F(CheckOut, GoesOnWithoutASaveCallback) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    CMFacade::saveCallbackFunc() = nullptr;
    EXPECT_EQ(checkOutUnits(host.addUnit("Pump")), 1);
}

TEST_F(CheckOut, AnEmptyListSavesNothingCallsNothingAndRunsNothing) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    EXPECT_EQ(checkOut(units), 0);
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(CheckOut, AListOfNothingButNullOpensReloadsAndDoesNotCloseThem) {
    units = list(static_cast<IUnit *>(nullptr));
    EXPECT_EQ(checkOut(units), 0);
    EXPECT_THAT(calls(), ElementsAre("reloads open"));
}

// --- The list.

TEST_F(CheckOut, TakesEachUnitOnceAndSkipsNull) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    units = list(&pump, nullptr, &valve, &pump);
    EXPECT_EQ(checkOut(units), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Pump.ocl", "co Valve.ocl"));
    EXPECT_THAT(entries(units), ElementsAre(&pump, &valve));
}

TEST_F(CheckOut, PutsTheReloadedUnitInThePlaceOfTheOldOneInTheValidatorsOrder) {
    auto &pump = host.addClass("Pump");
    auto &valve = host.addClass("Valve");
    IUnit *newPump = nullptr;
    host.reload.reloadUnit = [&](IUnit *unit, int) -> IUnit * {
        return unit == &pump ? newPump = &host.replaceClass(pump) : unit;
    };
    EXPECT_EQ(checkOutUnits(pump, valve), 1);
    EXPECT_THAT(entries(units), ElementsAre(&valve, newPump)) << "what was replaced comes last";
    expectNothingIsLeft();
}

TEST_F(CheckOut, SkipsAUnitThatAnEarlierReloadHasReplacedAndListsItsReplacement) {
    auto &pump = host.addClass("Pump");
    auto &valve = host.addClass("Valve");
    IUnit *newValve = nullptr;
    host.reload.reloadUnit = [&](IUnit *unit, int) {
        newValve = &host.replaceClass(valve);
        return unit;
    };
    EXPECT_EQ(checkOutUnits(pump, valve), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Pump.ocl"));
    EXPECT_THAT(entries(units), ElementsAre(&pump, newValve));
}

TEST_F(CheckOut, SkipsAUnitThatAnEarlierReloadHasRemovedAndLeavesItOut) {
    auto &pump = host.addClass("Pump");
    auto &valve = host.addClass("Valve");
    host.reload.reloadUnit = [&](IUnit *unit, int) {
        host.removeObject(valve);
        return unit;
    };
    EXPECT_EQ(checkOutUnits(pump, valve), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Pump.ocl"));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
}

TEST_F(CheckOut, AUnitThatGivesNoHandleIsCheckedOutAndLeftOutOfTheList) {
    auto &pump = host.addClass("Pump");
    pump.onGetHandle = [] { throw std::runtime_error("no handle"); };
    EXPECT_EQ(checkOutUnits(pump), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Pump.ocl"));
    EXPECT_TRUE(units.IsEmpty());
}

// --- Arguments and templates.

TEST_F(CheckOut, TheCallersArgumentsComeFirstAndStay) {
    setToolProperty(IPN::CMCheckOut, "co $label $Unit");
    CMLabel label("R 1");
    args.AddTail(&label);
    checkOutUnits(host.addUnit("Pump"));
    EXPECT_THAT(host.worker.commands, ElementsAre("co \"R 1\" Pump.ocl"));
    EXPECT_THAT(std::vector<CMArgument *>(args.begin(), args.end()), ElementsAre(&label));
    args.RemoveAll();
}

TEST_F(CheckOut, AnArgumentOfTheCallerWinsOverTheOperationsOwn) {
    class Unit : public CMArgument {
        int isNamed(const CString &name) const override { return name == "Unit" ? 1 : 0; }
        CString substitute(const CString &) override { return "other.ocl"; }
    } own;
    args.AddTail(&own);
    checkOutUnits(host.addUnit("Pump"));
    EXPECT_THAT(host.worker.commands, ElementsAre("co other.ocl"));
    args.RemoveAll();
}

TEST_F(CheckOut, TheArchivesArgumentAnswersTheMainArchive) {
    setToolProperty(IPN::CMCheckOut, "co $archive $Unit");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    checkOutUnits(host.addUnit("Pump"));
    EXPECT_THAT(host.worker.commands, ElementsAre("co /archives/plant Pump.ocl"));
}

TEST_F(CheckOut, MakesTheUnitsArchiveTheMainOneBeforeTheExpansion) {
    setToolProperty(IPN::CMCheckOut, "co $archive $Unit");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    setToolProperty(IPN::CMArchiveSelection, "File");
    auto &pump = host.addUnit("Pump");
    pump.batchArchive = "/archives/pump";
    auto &valve = host.addUnit("Valve");
    valve.batchArchive = "/archives/valve";
    checkOutUnits(pump, valve);
    EXPECT_THAT(host.worker.commands, ElementsAre("co /archives/pump Pump.ocl", "co /archives/valve Valve.ocl"));
}

TEST_F(CheckOut, WithOneArchiveForTheProjectTheUnitsOwnIsNotLookedAt) {
    setToolProperty(IPN::CMCheckOut, "co $archive $Unit");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    setToolProperty(IPN::CMArchiveSelection, "Project");
    auto &pump = host.addUnit("Pump");
    pump.batchArchive = "/archives/pump";
    checkOutUnits(pump);
    EXPECT_THAT(host.worker.commands, ElementsAre("co /archives/plant Pump.ocl"));
}

TEST_F(CheckOut, ExpandsBeforeTheGuardStarts) {
    setToolProperty(IPN::CMCheckOut, "co all");
    checkOutUnits(project());
    EXPECT_LT(lookUpOf(IPN::CMCheckOut), lookUpOf("SupportTreeRepository"));
}

TEST_F(CheckOut, AUnitWithAnEmptyCommandDoesNotRunThatOfTheUnitBefore) {
    setToolProperty(IPN::CMCheckOut, "($UnitDirectory ? co $Unit)");
    auto &pump = host.addUnit("Pump");
    pump.directory = (unitsDirectory() / "sub").string();
    EXPECT_EQ(checkOutUnits(pump, host.addUnit("Valve")), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Pump.ocl"));
    EXPECT_EQ(logTexts()[3], "Executing the following command to check out the file: ");
}

// --- Failures.

TEST_F(CheckOut, OnlyTheLastUnitDecidesTheResult) {
    setToolProperty(IPN::CMCheckOut, "co $extra $Unit");
    ExtraArgument extra;
    extra.answers = {true, false, true};
    args.AddTail(&extra);
    EXPECT_EQ(checkOutUnits(host.addUnit("A"), host.addUnit("B"), host.addUnit("C")), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co x A.ocl", "co x C.ocl"));
    extra.answers = {true, true, true, true, true, false};
    EXPECT_EQ(checkOutUnits(host.addUnit("D"), host.addUnit("E"), host.addUnit("F")), 0);
    EXPECT_TRUE(diags.IsEmpty()) << "a failed expansion is no diagnostic";
    args.RemoveAll();
}

TEST_F(CheckOut, AFailedExpansionLogsAndReloadsNothingAndKeepsTheEntry) {
    setToolProperty(IPN::CMCheckOut, "co $missing");
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(checkOutUnits(pump), 0);
    EXPECT_THAT(calls(), ElementsAre("reloads open", "reloads close"));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
    expectNothingIsLeft();
}

TEST_F(CheckOut, AMissingTemplateIsAFailedExpansion) {
    host.setTool("CVS");
    EXPECT_EQ(checkOutUnits(host.addUnit("Pump")), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(CheckOut, AWorkingDirectoryThatCannotBeEnteredFailsTheUnitAndLogsBothLines) {
    breakExecute();
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(checkOutUnits(pump), 0);
    EXPECT_THAT(logTexts(), ElementsAre("Executing the following command to check out the file: co Pump.ocl",
                                        "Check in command returned the following: "));
    EXPECT_THAT(host.callsOf("reload "), IsEmpty());
    EXPECT_THAT(host.callsOf("compare load after"), IsEmpty());
    EXPECT_THAT(entries(units), ElementsAre(&pump));
    expectNothingIsLeft();
}

TEST_F(CheckOut, AToolThatPrintsAnErrorIsAGoodRun) {
    setToolProperty("OperationErrorPattern", "locked");
    host.worker.run = [](const CString &) { return recording::ToolRun{{}, {"co: locked by bob\n"}, 0}; };
    EXPECT_EQ(checkOutUnits(host.addUnit("Pump")), 1);
    EXPECT_EQ(host.messages.shown.size(), 1U);
    EXPECT_THAT(host.callsOf("reload "), Contains("reload Pump flag=0"));
}

TEST_F(CheckOut, ErrorsOfOneUnitStandInFrontOfThoseOfTheNext) {
    host.worker.run = [](const CString &command) { return recording::ToolRun{{}, {command + " failed\n"}, 0}; };
    checkOutUnits(host.addUnit("A"), host.addUnit("B"));
    EXPECT_EQ(shown.str(), "co A.ocl\nco A.ocl failed\nco A.ocl failed\n"
                           "co B.ocl\nco A.ocl failed\nco B.ocl failed\nco A.ocl failed\nco B.ocl failed\n");
}

TEST_F(CheckOut, ATimeOutIsAGoodRun) {
    host.worker.run = [](const CString &) { return recording::ToolRun{{"half\n"}, {}, 258}; };
    EXPECT_EQ(checkOutUnits(host.addUnit("Pump")), 1);
}

TEST_F(CheckOut, AnExceptionLeavesTheArgumentsAsTheyWere) {
    host.worker.run = [](const CString &) -> recording::ToolRun { throw std::runtime_error("host"); };
    EXPECT_THROW(checkOutUnits(host.addUnit("Pump")), std::runtime_error);
    EXPECT_TRUE(args.IsEmpty());
    EXPECT_EQ(host.handlesAlive, 0);
    EXPECT_EQ(host.logsOpen, 0);
}

// --- The project file in the old layout.

class CheckOutOldLayout : public CheckOut {
  protected:
    CheckOutOldLayout() { useOldLayout(); }
    const std::filesystem::path unitFile = unitsDirectory() / "Plant.ory";
    const std::filesystem::path toolFile = scratch / "Plant.ory";
};

TEST_F(CheckOutOldLayout, AGoodRunBringsTheToolsFileOverTheUnits) {
    host.worker.run = [this](const CString &) {
        write(toolFile, "new");
        return recording::ToolRun{};
    };
    EXPECT_EQ(checkOutUnits(project()), 1);
    EXPECT_EQ(read(unitFile), "new");
    EXPECT_FALSE(exists(toolFile));
}

TEST_F(CheckOutOldLayout, TheToolFindsNoCopyOfTheProjectFile) {
    bool isCopied = true;
    host.worker.run = [&](const CString &) {
        isCopied = exists(toolFile);
        return recording::ToolRun{};
    };
    EXPECT_EQ(checkOutUnits(project()), 1);
    EXPECT_FALSE(isCopied);
}

TEST_F(CheckOutOldLayout, TheToolsFileIsInPlaceBeforeTheSecondPictureIsTaken) {
    host.worker.run = [this](const CString &) {
        write(toolFile, "new");
        return recording::ToolRun{};
    };
    checkOutUnits(project());
    std::vector<std::string> steps = calls();
    std::erase_if(steps, [](const std::string &call) {
        return !call.starts_with("move file") && !call.starts_with("compare");
    });
    EXPECT_THAT(steps, ElementsAre(StartsWith("compare start"), "compare load before", StartsWith("move file"),
                                   "compare load after", "compare -> 0", "compare end"));
}

TEST_F(CheckOutOldLayout, AToolThatPrintsAnErrorHasItsFileTakenAllTheSame) {
    setToolProperty("OperationErrorPattern", "locked");
    host.worker.run = [this](const CString &) {
        write(toolFile, "new");
        return recording::ToolRun{{}, {"co: locked by bob\n"}, 0};
    };
    EXPECT_EQ(checkOutUnits(project()), 1);
    EXPECT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(read(unitFile), "new") << "the guard was committed";
    EXPECT_FALSE(exists(toolFile));
    EXPECT_THAT(host.calls, Contains("reload Plant flag=0"));
}

TEST_F(CheckOutOldLayout, AFailedExpansionTakesTheToolsFileAway) {
    setToolProperty(IPN::CMCheckOut, "co $missing");
    write(toolFile, "left over");
    EXPECT_EQ(checkOutUnits(project()), 0);
    EXPECT_EQ(read(unitFile), "old");
    EXPECT_FALSE(exists(toolFile)) << "the guard was started and rolled back";
}

} // namespace
