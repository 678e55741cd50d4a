// Tests what the command operations report to the outcome observer.
#include "CM/CMSupport/command/CMAddMember.h"
#include "CM/CMSupport/command/CMCheckIn.h"
#include "CM/CMSupport/command/CMCheckOut.h"
#include "CM/CMSupport/command/CMCheckOutFromArchive.h"
#include "CM/CMSupport/command/CMConnectToCMRepository.h"
#include "CM/CMSupport/command/CMDeleteMember.h"
#include "CM/CMSupport/command/CMFetch.h"
#include "CM/CMSupport/command/CMListArchive.h"
#include "CM/CMSupport/command/CMMoveMember.h"
#include "CM/CMSupport/command/CMRenameMember.h"
#include "CM/CMSupport/command/CMUnCheckout.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"
#include "tests/support/OutcomeRecorder.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Kind = CMOutcome::Kind;
using Match = CMToolRun::Match;

namespace {

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

// --- What every command operation reports.

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
    EXPECT_THAT(reason(), testing::EndsWith("a$b.ocl can't be given to a tool: it holds the character $"));
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

// --- How a run went.

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
        {{exited, 127, {}}, "not installed, or not on the PATH (exit status 127)"},
        {{killedBySignal, 11, "Segmentation fault"}, "the tool died of signal 11 (Segmentation fault)"},
        {{timedOut, 0, {}}, "did not end within its time limit"},
        {{interrupted, 0, {}}, "the tool was ended by the interruption"},
        {{withheld, 0, {}}, "interrupted before its turn"},
        {{notStarted, ENOENT, "No such file"}, "the tool is not installed, or not on the PATH"},
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

// --- Check out and its undoing.

TEST_F(Outcome, OfACheckOutIsReadAgainOrHasItsHeaderUpdated) {
    auto &pump = host.addUnit("Pump");
    runOn<CMCheckOut>(pump);
    EXPECT_EQ(seen.last().reload, CMOutcome::Reload::content);
    host.reload.compare = [](const CString &) { return 1; };
    runOn<CMCheckOut>(pump);
    EXPECT_EQ(seen.last().reload, CMOutcome::Reload::header);
    EXPECT_EQ(seen.last().unitNow, &pump);
}

TEST_F(Outcome, OfACheckOutNamesTheUnitThatTheReloadGave) {
    auto &pump = host.addUnit("Pump");
    IUnit *reloaded = nullptr;
    host.reload.reloadUnit = [&](IUnit *unit, int) {
        return reloaded = &host.replaceClass(dynamic_cast<recording::Class &>(*unit));
    };
    runOn<CMCheckOut>(pump);
    EXPECT_EQ(seen.last().unit, &pump) << "for finding the entry of the list";
    EXPECT_EQ(seen.last().unitNow, reloaded);
}

TEST_F(Outcome, OfACheckOutIsNotLoadedWhereTheFileCannotBeRead) {
    host.reload.reloadUnit = [](IUnit *, int) { return nullptr; };
    auto &pump = host.addUnit("Pump");
    runOn<CMCheckOut>(pump);
    EXPECT_EQ(seen.last().kind, Kind::notLoaded);
    EXPECT_EQ(seen.last().unitNow, nullptr);
    EXPECT_THAT(reason(), HasSubstr("could not be loaded into the model"));
    EXPECT_EQ(seen.last().runs.size(), 1U);
}

TEST_F(Outcome, OfACheckOutIsDeclinedByANo) {
    auto &pump = host.addUnit("Pump");
    makeWritable(pump);
    answer("no");
    runOn<CMCheckOut>(pump, host.addUnit("Valve"));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl declined", "Valve.ocl done"));
    EXPECT_EQ(seen.outcomes[0].reason, "the file is writable, and the answer was No");
}

TEST_F(Outcome, OfACheckOutIsGoneWhereAnEarlierReloadReplacedTheUnit) {
    auto &drives = host.addUnit("Drives");
    auto &pump = host.addUnit("Pump", &drives);
    const IUnit *const before = &pump;
    host.reload.reloadUnit = [&](IUnit *unit, int) {
        if (unit == &drives) {
            host.replaceClass(pump);
        }
        return unit;
    };
    runOn<CMCheckOut>(drives, pump);
    ASSERT_EQ(seen.outcomes.size(), 2U);
    EXPECT_EQ(seen.last().kind, Kind::gone);
    EXPECT_EQ(seen.last().unit, before);
    EXPECT_EQ(seen.last().unitNow, nullptr);
    EXPECT_THAT(reason(), HasSubstr("the reload of an earlier unit replaced it"));
}

TEST_F(Outcome, OfACheckOutFromTheArchiveNamesTheItem) {
    CMArchiveItem item("Pump.ocl", "1.1", CMArchiveItem::readOnly, "", "");
    CMArchiveItemList items;
    CMArchiveItem *entry = &item;
    items.AddTail(entry);
    CMCheckOutFromArchive()(items, args, diags);
    EXPECT_EQ(seen.last().item, &item);
    EXPECT_EQ(seen.last().unit, nullptr);
    EXPECT_EQ(seen.last().runs[0].command, "coa Pump.ocl");
}

TEST_F(Outcome, OfAnUndoneCheckOutIsReadAgain) {
    auto &pump = host.addUnit("Pump");
    runOn<CMUnCheckout>(pump);
    EXPECT_EQ(seen.last().kind, Kind::done);
    EXPECT_EQ(seen.last().reload, CMOutcome::Reload::content);
    host.reload.reloadUnit = [](IUnit *, int) { return nullptr; };
    runOn<CMUnCheckout>(pump);
    EXPECT_EQ(seen.last().kind, Kind::notLoaded);
}

TEST_F(Outcome, ComesAfterTheGuardOfTheProjectFileHasDoneItsPart) {
    useOldLayout();
    toolDoes([&](const CString &) {
        write(scratch / "Plant.ory", "from the tool");
        return recording::ToolRun{};
    });
    runOn<CMCheckOut>(project());
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "from the tool");
    EXPECT_TRUE(seen.last().fileChanged);
}

// --- Add to archive.

class AddOutcome : public Outcome {
  protected:
    AddOutcome() {
        setGeneral("CMTool", "RCS");
        setToolProperty("CheckOutCheckInDirectoryOnceDuringAddToArchive", "True");
        setToolProperty("CheckOut", "co $mode$LabelPart;");
        setToolProperty("AddMember_WithoutCheckOutCheckInDirectory", "add $UnitPath");
        setToolProperty("CheckIn", "ci $LogPart $UnitPath");
    }
};

TEST_F(AddOutcome, ByDirectoriesIsThatOfTheDirectoryOfEachUnitAndOfTheDirectoryAgain) {
    auto &pump = host.addUnit("Pump");
    runOn<CMAddMember>(pump, host.addUnit("Valve"));
    EXPECT_THAT(seen.lines(),
                ElementsAre("modelSaved", "_Plant done", "Pump.ocl done", "Valve.ocl done", "_Plant done"));
    EXPECT_EQ(seen.outcomes[1].unit, nullptr);
    EXPECT_EQ(seen.outcomes[1].property, "CheckOut");
    EXPECT_EQ(seen.outcomes[2].unit, &pump);
    EXPECT_EQ(seen.outcomes[2].runs[0].command, "add " + pump.getFullFileName());
}

TEST_F(AddOutcome, IsFailedForTheUnitsOfADirectoryThatWasNotCheckedOut) {
    setToolProperty("CheckOut", "");
    runOn<CMAddMember>(host.addUnit("Pump"));
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "_Plant noCommand", "Pump.ocl failed"));
    EXPECT_THAT(reason(), HasSubstr("was not checked out: the CM tool has no command for it (property CheckOut)"));
}

TEST_F(AddOutcome, IsRefusedOutsideTheWorkingDirectory) {
    setToolProperty("CheckOutCheckInDirectoryOnceDuringAddToArchive", "False");
    setOldLayout();
    runOn<CMAddMember>(host.addUnit("Pump"));
    EXPECT_EQ(seen.last().kind, Kind::refused);
    EXPECT_THAT(reason(), HasSubstr("can't be added to the archive"));
}

// --- List and connect, which concern no single item.

TEST_F(Outcome, OfAListingHoldsItsCommandAndWhatItPrinted) {
    setToolProperty(IPN::CMListArchive, "ls");
    toolDoes([](const CString &) { return recording::ToolRun{{"Pump.ocl\n"}, {}, 0, {}}; });
    CMArchiveItemListWrapper items;
    CMListArchive()(items.list(), args, diags);
    EXPECT_THAT(seen.lines(), ElementsAre("done"));
    EXPECT_EQ(seen.last().unit, nullptr);
    EXPECT_EQ(seen.last().runs[0].command, "ls");
    EXPECT_EQ(seen.last().runs[0].output, "Pump.ocl\n");
}

TEST_F(Outcome, OfConnectingHoldsBothCommands) {
    setToolProperty(IPN::CMConnectToCMRepository, "connect");
    setToolProperty("PostConnectToCMRepository", "after");
    CMUnitList none;
    CMConnectToCMRepository()(none, args, diags);
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "done"));
    ASSERT_EQ(seen.last().runs.size(), 2U);
    EXPECT_EQ(seen.last().runs[1].command, "after");
}

TEST_F(Outcome, OfConnectingIsDoneWithAnEmptySecondCommandAndNotWithoutOne) {
    setToolProperty(IPN::CMConnectToCMRepository, "connect");
    CMUnitList none;
    CMConnectToCMRepository()(none, args, diags);
    EXPECT_EQ(seen.last().kind, Kind::noCommand);
    EXPECT_EQ(seen.last().property, "PostConnectToCMRepository");
    setToolProperty("PostConnectToCMRepository", "");
    CMConnectToCMRepository()(none, args, diags);
    EXPECT_EQ(seen.last().kind, Kind::done);
    EXPECT_EQ(seen.last().runs.size(), 1U);
}

// --- Move, rename, delete.

class MoveOutcome : public Outcome {
  protected:
    MoveOutcome() {
        setToolProperty("Move", "mv $oldName $newName");
        oldOwner.partsDirectory = "/old";
        newOwner.partsDirectory = "/new";
    }
    int move(IUnit &unit) { return run<CMMoveMember>(list(&unit, &oldOwner, &newOwner)); }
    int rename(IUnit &unit, const CString &from, const CString &to) {
        return CMRenameMember()(&unit, from, to, diags, false);
    }
    recording::Subsystem &oldOwner = host.addSubsystem("Old");
    recording::Subsystem &newOwner = host.addSubsystem("New");
};

TEST_F(MoveOutcome, IsThatOfTheUnitAlone) {
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(move(pump), 1);
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl done"));
    EXPECT_EQ(seen.last().unit, &pump);
    EXPECT_EQ(seen.last().property, "Move");
}

TEST_F(MoveOutcome, IsFailedByTheToolThoughTheOperationAnswersOne) {
    toolEnds({RunEnd::Kind::exited, 1, {}});
    EXPECT_EQ(move(host.addUnit("Pump")), 1);
    EXPECT_EQ(seen.last().kind, Kind::failed);
}

TEST_F(MoveOutcome, HasNothingToDoWithinOneDirectory) {
    newOwner.partsDirectory = "/old";
    move(host.addUnit("Pump"));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl nothingToDo"));
}

TEST_F(MoveOutcome, HasNoCommandWithoutATemplateAndIsRefusedForADirectory) {
    setToolProperty("Move", "");
    move(host.addUnit("Pump"));
    EXPECT_EQ(seen.last().kind, Kind::noCommand);
    EXPECT_EQ(seen.last().property, "Move");
    setToolProperty("Move", "mv");
    newOwner.partsDirectory = "/a$b";
    move(host.addUnit("Valve"));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl noCommand", "Valve.ocl refused"));
}

TEST_F(MoveOutcome, OfARenameHoldsBothCommands) {
    setToolProperty("Rename", "mv $oldName $newName");
    setToolProperty("RenameDirectory", "mvdir $oldName $newName");
    rename(host.addUnit("Pump"), "/old/Pump.ocl", "/new/Pump.ocl");
    ASSERT_EQ(seen.last().runs.size(), 2U);
    EXPECT_EQ(seen.last().runs[0].command, "mv /old/Pump.ocl /old/Pump.ocl");
    EXPECT_EQ(seen.last().runs[1].command, "mvdir /old /new");
}

TEST_F(MoveOutcome, OfARenameHasNothingToDoForOneNameAndNoCommandWithoutATemplate) {
    auto &pump = host.addUnit("Pump");
    rename(pump, "/a", "/a");
    rename(pump, "/a", "/b");
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl nothingToDo", "Pump.ocl noCommand"));
    EXPECT_EQ(seen.last().property, "Rename");
}

TEST_F(MoveOutcome, OfADeletionIsThatOfEachUnit) {
    setToolProperty(IPN::Delete, "rm $Unit");
    runOn<CMDeleteMember>(host.addUnit("Pump"), host.addUnit("Valve"));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl done", "Valve.ocl done"));
}

TEST_F(MoveOutcome, OfADirectoryNamesIt) {
    CMDeleteMember().deleteDirectory("/models/Drives", args, diags, false);
    EXPECT_EQ(seen.last().kind, Kind::noCommand);
    setToolProperty("DeleteDirectory", "rmdir $UnitDirPath");
    CMDeleteMember().deleteDirectory("/models/Drives", args, diags, false);
    EXPECT_THAT(seen.lines(), ElementsAre("Drives noCommand", "Drives done"));
    EXPECT_EQ(seen.last().file, "/models/Drives");
    EXPECT_EQ(seen.last().runs[0].command, "rmdir /models/Drives");
}

} // namespace
