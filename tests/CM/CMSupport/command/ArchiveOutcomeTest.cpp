// Tests the outcomes of operations that change, list or connect the archive.
#include "CM/CMSupport/command/CMAddMember.h"
#include "CM/CMSupport/command/CMConnectToCMRepository.h"
#include "CM/CMSupport/command/CMDeleteMember.h"
#include "CM/CMSupport/command/CMListArchive.h"
#include "CM/CMSupport/command/CMMoveMember.h"
#include "CM/CMSupport/command/CMRenameMember.h"
#include "tests/CM/CMSupport/command/OutcomeFixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using Kind = CMOutcome::Kind;

namespace {

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
