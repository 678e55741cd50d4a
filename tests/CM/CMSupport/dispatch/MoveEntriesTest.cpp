// Tests the facade's entries for move, rename and delete, with the cases in which a provider leaves them to the
// commands.
#include "tests/CM/CMSupport/dispatch/EntriesFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class MoveEntries : public EntriesFixture {
  protected:
    MoveEntries() {
        tellTools("Move", "move $Unit");
        tellTools("MoveDirectory", "move directory $Unit");
        tellTools("Rename", "rename $Unit");
        tellTools(IPN::Delete, "delete $Unit");
        tellTools("DeleteDirectory", "delete directory");
        oldOwner.partsDirectory = "/old";
        newOwner.partsDirectory = "/new";
        tanks.persistAs = "T";
    }
    void moves(IUnit &unit) { triple = list(&unit, &oldOwner, &newOwner); }

    recording::Subsystem &oldOwner = host.addSubsystem("Old");
    recording::Subsystem &newOwner = host.addSubsystem("New");
    recording::Class &pump = host.addUnit("Pump");
    recording::Subsystem &tanks = host.addSubsystem("Tanks"); ///< with its own directory
    CMUnitList triple = list(&pump, &oldOwner, &newOwner);
    CMUnitList units = list(&pump);
    CString newPath = "/m/New.ocl";
    IDObject *object = nullptr;
    bool flag = false;

    const Entry move{"MoveMember", [this] { return CMFacade::MoveMember(triple, args, diags); }};
    const Entry movePackage{
        "movePackageContent",
        [this] { return CMFacade::movePackageContent(&tanks, units, "/old", "/new", args, diags, flag); }};
    const Entry rename{"RenameMember",
                       [this] { return CMFacade::RenameMember(&pump, "/m/Old.ocl", newPath, diags); }};
    const Entry remove{"DeleteMember", [this] { return CMFacade::DeleteMember(units, args, diags); }};
    const Entry removeDirectory{"DeleteDirectory",
                                [this] { return CMFacade::DeleteDirectory("/m/T", args, diags, flag, object); }};
    const std::vector<Entry> all{move, movePackage, rename, remove, removeDirectory};
};

TEST_F(MoveEntries, RunTheirOperationOnTheCommandRoute) {
    for (const Entry &entry : all) {
        EXPECT_EQ(entry.call(), 1) << entry.name;
    }
    EXPECT_THAT(host.worker.commands, ElementsAre("RCS move Pump.ocl", "RCS move Pump.ocl", "RCS rename Pump.ocl",
                                                  "RCS delete Pump.ocl", "RCS delete directory"));
}

TEST_F(MoveEntries, OpenATransactionOfTheirType) {
    expectTransaction(move, CMTxnMove);
    expectTransaction(movePackage, CMTxnMove);
    expectTransaction(rename, CMTxnRename);
    expectTransaction(remove, CMTxnDelete);
    expectTransaction(removeDirectory, CMTxnDeleteDirectory);
}

TEST_F(MoveEntries, DoNothingInAnInvalidTransaction) {
    expectNothingInAnInvalidTransaction(all);
    EXPECT_EQ(triple.GetCount(), 3);
    EXPECT_EQ(units.GetCount(), 1);
}

TEST_F(MoveEntries, AreSoundAfterAnException) { expectSoundAfterAnException(all); }

TEST_F(MoveEntries, OnTheCommandRouteHybridModeHasNoEffect) {
    setGeneral("UseHybridModeWhenPossible", "True");
    CMProperty::setSCCToolName("Basalt");
    moves(tanks);
    EXPECT_EQ(move.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("RCS move directory Tanks.osb"));
    host.setTool("None");
    host.setProperty(nullptr, IPN::CM, IPN::General, "UseSCCtool", "No");
    EXPECT_EQ(move.call(), 0);
}

TEST_F(MoveEntries, DeleteTakesBarredUnitsOffTheListAndMovesDoNot) {
    pump.reference = true;
    EXPECT_EQ(move.call(), 1);
    EXPECT_EQ(movePackage.call(), 1);
    EXPECT_EQ(triple.GetCount(), 3);
    EXPECT_EQ(units.GetCount(), 1);
    EXPECT_EQ(remove.call(), 0);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_THAT(host.worker.commands, ElementsAre("RCS move Pump.ocl", "RCS move Pump.ocl"));
}

TEST_F(MoveEntries, DeleteGoesOnToTheRouteWithAListThatTheChecksHaveEmptied) {
    useProviderNamed("Tessera", false);
    pump.reference = true;
    EXPECT_EQ(remove.call(), 0);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_TRUE(wentToProvider());
}

TEST_F(MoveEntries, AMoveOfAnEmptyListGivesOne) {
    triple.RemoveAll();
    EXPECT_EQ(move.call(), 1);
}

// --- Hybrid mode: move and delete.

TEST_F(MoveEntries, InHybridModeAPlainUnitMovesByTheProvider) {
    useProviderNamed("Basalt", true);
    EXPECT_EQ(move.call(), 0);
    EXPECT_TRUE(wentToProvider());
}

TEST_F(MoveEntries, InHybridModeASubsystemWithoutADirectoryMovesByTheProvider) {
    useProviderNamed("Basalt", true);
    tanks.persistAs.Empty();
    moves(tanks);
    EXPECT_EQ(move.call(), 0);
    EXPECT_TRUE(wentToProvider());
}

TEST_F(MoveEntries, InHybridModeAUnitWithADirectorySettingThatIsNoSubsystemMovesByTheProvider) {
    useProviderNamed("Basalt", true);
    pump.persistAs = "P";
    EXPECT_EQ(move.call(), 0);
    EXPECT_TRUE(wentToProvider());
}

TEST_F(MoveEntries, InHybridModeOneSubsystemWithADirectorySendsAllByCommand) {
    useProviderNamed("Basalt", true);
    triple = list(&pump, &oldOwner, &newOwner, &tanks, &oldOwner, &newOwner);
    EXPECT_EQ(move.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("Basalt move Pump.ocl", "Basalt move directory Tanks.osb"));
    EXPECT_EQ(providerCalls(), 0);
}

TEST_F(MoveEntries, InHybridModeAnOwnerWithADirectoryCountsLikeAUnit) {
    useProviderNamed("Basalt", true);
    newOwner.persistAs = "N";
    EXPECT_EQ(move.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("Basalt move Pump.ocl"));
}

TEST_F(MoveEntries, InHybridModeNullEntriesAreNoSubsystems) {
    useProviderNamed("Basalt", true);
    triple = list(nullptr, nullptr, nullptr);
    EXPECT_EQ(move.call(), 0);
    EXPECT_TRUE(wentToProvider());
}

TEST_F(MoveEntries, InHybridModeOneSubsystemWithADirectorySendsAllDeletesByCommand) {
    useProviderNamed("Basalt", true);
    EXPECT_EQ(remove.call(), 0);
    EXPECT_TRUE(wentToProvider());
    host.clearRecords();
    units = list(&pump, &tanks);
    EXPECT_EQ(remove.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("SCC delete Pump.ocl", "Basalt delete directory"));
    EXPECT_EQ(providerCalls(), 0);
}

TEST_F(MoveEntries, InHybridModeASubsystemThatTheChecksTookOffDoesNotCount) {
    useProviderNamed("Basalt", true);
    tanks.reference = true;
    units = list(&tanks, &pump);
    EXPECT_EQ(remove.call(), 0);
    EXPECT_TRUE(wentToProvider());
}

TEST_F(MoveEntries, GoToTheProviderWhereTheModeOrTheProviderIsAnother) {
    moves(tanks);
    units = list(&tanks);
    newPath = "/other/New.ocl";
    const struct {
        const char *provider;
        bool hybrid;
    } rows[] = {{"Basalt", false}, {"Tessera", true}, {"", true}};
    for (const auto &row : rows) {
        useProviderNamed(row.provider, row.hybrid);
        for (const Entry &entry : {move, remove, rename}) {
            host.clearRecords();
            EXPECT_EQ(entry.call(), 0) << entry.name << " " << row.provider;
            EXPECT_TRUE(wentToProvider()) << entry.name << " " << row.provider;
        }
    }
}

TEST_F(MoveEntries, InHybridModeTheProvidersNameIsTakenInAnyCaseOfLetters) {
    useProviderNamed("BASALT", true);
    host.setToolDefault("BASALT", "MoveDirectory", "by command");
    moves(tanks);
    EXPECT_EQ(move.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("by command"));
}

// --- Hybrid mode: rename.

TEST_F(MoveEntries, InHybridModeARenameWithinOneDirectoryStaysWithTheProvider) {
    useProviderNamed("Basalt", true);
    EXPECT_EQ(rename.call(), 0);
    EXPECT_TRUE(wentToProvider());
}

TEST_F(MoveEntries, InHybridModeARenameAcrossDirectoriesGoesByCommand) {
    useProviderNamed("Basalt", true);
    newPath = "/other/New.ocl";
    EXPECT_EQ(rename.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("Basalt rename Pump.ocl"));
}

// --- The package, and directories.

TEST_F(MoveEntries, APackagesContentGoesToTheProviderOnlyWithTessera) {
    for (const char *name : {"Tessera", "tESSERA"}) {
        useProviderNamed(name, true);
        host.clearRecords();
        EXPECT_EQ(movePackage.call(), 0);
        EXPECT_TRUE(wentToProvider()) << name;
    }
    useProviderNamed("Basalt", false);
    host.clearRecords();
    flag = true;
    EXPECT_EQ(movePackage.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("Basalt move Pump.ocl")) << "with the flag passed on";
}

TEST_F(MoveEntries, APackagesContentGetsAllArguments) {
    setToolProperty("Move", "$oldName $newName");
    units = list(&tanks, &pump);
    EXPECT_EQ(movePackage.call(), 1);
    EXPECT_THAT(host.worker.commands,
                ElementsAre("/old/Tanks.osb /new/Tanks.osb", "/old//Pump.ocl /new//Pump.ocl"));
}

TEST_F(MoveEntries, TesseraByNameOnTheCommandRouteIsNoProvider) {
    CMProperty::setSCCToolName("Tessera");
    EXPECT_EQ(movePackage.call(), 1);
    EXPECT_EQ(removeDirectory.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("RCS move Pump.ocl", "RCS delete directory"));
}

TEST_F(MoveEntries, ADirectoryIsDeletedByTheProviderOnlyWithTessera) {
    useProviderNamed("Tessera", false);
    host.model.usingTSV = true;
    object = &tanks;
    EXPECT_EQ(removeDirectory.call(), 0);
    EXPECT_TRUE(wentToProvider());
    EXPECT_THAT(host.callsOf("delete from team server"), IsEmpty());

    useProviderNamed("Basalt", false);
    host.model.usingTSV = false;
    host.clearRecords();
    flag = true;
    EXPECT_EQ(removeDirectory.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("Basalt delete directory")) << "with the flag passed on";
}

TEST_F(MoveEntries, WithTheTeamServerAUnitsDirectoryIsDeletedThere) {
    host.model.usingTSV = true;
    object = &tanks;
    EXPECT_EQ(removeDirectory.call(), 1);
    EXPECT_THAT(host.callsOf("delete from team server"), ElementsAre("delete from team server Tanks 1"));
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(MoveEntries, WithTheTeamServerADirectoryOfNoUnitGoesByCommand) {
    host.model.usingTSV = true;
    EXPECT_EQ(removeDirectory.call(), 1);
    auto &element = host.addElement("Relation");
    object = &element;
    EXPECT_EQ(removeDirectory.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("RCS delete directory", "RCS delete directory"));
}

TEST_F(MoveEntries, WithoutTheTeamServerAUnitsDirectoryGoesByCommand) {
    object = &tanks;
    EXPECT_EQ(removeDirectory.call(), 1);
    EXPECT_THAT(host.callsOf("delete from team server"), IsEmpty());
    EXPECT_THAT(host.worker.commands, ElementsAre("RCS delete directory"));
}

} // namespace
