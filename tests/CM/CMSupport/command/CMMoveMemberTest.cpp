#include "CM/CMSupport/command/CMMoveMember.h"

#include "tests/CM/CMSupport/command/CheckOutFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class MoveMember : public CheckOutFixture {
  protected:
    MoveMember() {
        setToolProperty("Move", "mv $oldName $newName");
        oldOwner.partsDirectory = "/old";
        newOwner.partsDirectory = "/new";
    }
    int move(CMUnitList units, bool hybrid = false) { return CMMoveMember()(units, args, diags, hybrid); }
    int moveOne(IUnit &unit, bool hybrid = false) { return move(list(&unit, &oldOwner, &newOwner), hybrid); }

    recording::Subsystem &oldOwner = host.addSubsystem("Old");
    recording::Subsystem &newOwner = host.addSubsystem("New");
};

TEST_F(MoveMember, MovesAFileWithADoubledSeparatorWhereItHasNoDirectory) {
    EXPECT_EQ(moveOne(host.addUnit("Pump")), 1);
    const std::string log = "log 4 ../CM/CMSupport/MoveMember: ";
    EXPECT_THAT(calls(), ElementsAre(log + "Executing the following command to move the file: "
                                           "mv /old//Pump.ocl /new//Pump.ocl",
                                     "run mv /old//Pump.ocl /new//Pump.ocl",
                                     log + "Move file command returned the following: "));
    expectNothingIsLeft();
}

TEST_F(MoveMember, AsksTheOwnersForTheirPartsDirectoryAndNotWhereTheirOwnFilesStand) {
    oldOwner.directory = "/file/of/old";
    newOwner.directory = "/file/of/old";
    setToolProperty("Move", "mv $olddir $newdir");
    moveOne(host.addUnit("Pump"));
    EXPECT_THAT(host.worker.commands, ElementsAre("mv /old /new"));
}

TEST_F(MoveMember, ReplacesEveryPlaceholderWhereverItStands) {
    setToolProperty("Move", "$olddir $olddir $newdir $newdir $oldName $oldName $newName $newName");
    moveOne(host.addUnit("P"));
    EXPECT_THAT(host.worker.commands,
                ElementsAre("/old /old /new /new /old//P.ocl /old//P.ocl /new//P.ocl /new//P.ocl"));
}

TEST_F(MoveMember, PlaceholdersCountTheirCapitals) {
    setToolProperty("Move", "mv $oldDir");
    EXPECT_EQ(moveOne(host.addUnit("Pump")), 1);
    EXPECT_THAT(host.worker.commands, IsEmpty()) << "a variable that nothing knows";
}

TEST_F(MoveMember, ExpandsWhatIsLeftWithTheUnitAndTheArchive) {
    setToolProperty("Move", "mv $archive $Unit $newdir");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    moveOne(host.addUnit("Pump"));
    EXPECT_THAT(host.worker.commands, ElementsAre("mv /archives/plant Pump.ocl /new"));
}

TEST_F(MoveMember, UsesTheHostsSeparator) {
    host.places.separator = '\\';
    setToolProperty("Move", "mv $oldName");
    moveOne(host.addUnit("Pump"));
    EXPECT_THAT(host.worker.commands, ElementsAre("mv /old\\\\Pump.ocl"));
}

TEST_F(MoveMember, AUnitWithADirectoryMovesAsADirectory) {
    setToolProperty("MoveDirectory", "mvdir $oldName $newName");
    auto &tanks = host.addSubsystem("Tanks");
    tanks.persistAs = "TanksDir";
    EXPECT_EQ(moveOne(tanks), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("mvdir /old/TanksDir /new/TanksDir"));
}

TEST_F(MoveMember, AUnitWithADirectoryMovesItsFileInTheDirectoryWhereThereIsNoTemplateForDirectories) {
    auto &tanks = host.addSubsystem("Tanks");
    tanks.persistAs = "TanksDir";
    setToolProperty("MoveDirectory", "");
    moveOne(tanks);
    host.setTool("Other");
    host.setToolDefault("Other", "Move", "other $oldName $newName");
    moveOne(tanks);
    EXPECT_THAT(host.worker.commands, ElementsAre("mv /old/TanksDir/Tanks.osb /new/TanksDir/Tanks.osb",
                                                  "other /old/TanksDir/Tanks.osb /new/TanksDir/Tanks.osb"));
}

TEST_F(MoveMember, AUnitWithoutADirectoryNeverMovesAsOne) {
    setToolProperty("MoveDirectory", "mvdir $oldName");
    moveOne(host.addSubsystem("Tanks"));
    EXPECT_THAT(host.worker.commands, ElementsAre("mv /old//Tanks.osb /new//Tanks.osb"));
}

TEST_F(MoveMember, EachUnitTakesItsOwnTemplate) {
    setToolProperty("MoveDirectory", "mvdir $oldName");
    auto &tanks = host.addSubsystem("Tanks");
    tanks.persistAs = "T";
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(move(list(&tanks, &oldOwner, &newOwner, &pump, &newOwner, &oldOwner)), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("mvdir /old/T", "mv /new//Pump.ocl /old//Pump.ocl"));
}

TEST_F(MoveMember, AnEmptyListGivesOneEvenWithoutATool) {
    host.setTool("None");
    EXPECT_EQ(move(list()), 1);
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(MoveMember, WithoutAToolGivesOneDiagnostic) {
    host.setTool("None");
    EXPECT_EQ(moveOne(host.addUnit("Pump")), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(MoveMember, OfFourEntriesTheLastIsPassedOver) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    EXPECT_EQ(move(list(&pump, &oldOwner, &newOwner, &valve)), 1);
    EXPECT_EQ(move(list(&pump, &oldOwner, &newOwner, &valve, &oldOwner)), 1);
    EXPECT_THAT(host.worker.commands,
                ElementsAre("mv /old//Pump.ocl /new//Pump.ocl", "mv /old//Pump.ocl /new//Pump.ocl"));
}

TEST_F(MoveMember, ATripleWithANullIsPassedOverAndTheNextIsTaken) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    IUnit *const none = nullptr;
    EXPECT_EQ(move(list(none, &oldOwner, &newOwner, &pump, none, &newOwner, &pump, &oldOwner, none, &valve,
                        &oldOwner, &newOwner)),
              1);
    EXPECT_THAT(host.worker.commands, ElementsAre("mv /old//Valve.ocl /new//Valve.ocl"));
}

TEST_F(MoveMember, BetweenTwoOwnersWithTheSameDirectoryRunsNothing) {
    newOwner.partsDirectory = "/old";
    EXPECT_EQ(moveOne(host.addUnit("Pump")), 1);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(MoveMember, AUnitWithoutAFileOfItsOwnIsPassedOver) {
    auto &inner = host.addUnit("Inner");
    inner.saveUnit = false;
    EXPECT_EQ(moveOne(inner), 1);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(MoveMember, AnEmbeddedFileIsMovedThoughItIsNoSaveUnit) {
    auto &plan = host.addEmbeddedFile("plan.doc");
    plan.saveUnit = false;
    EXPECT_EQ(moveOne(plan), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("mv /old//plan.doc /new//plan.doc"));
}

TEST_F(MoveMember, WithoutATemplateEndsAtOnce) {
    setToolProperty("Move", "");
    setToolProperty("MoveDirectory", "mvdir $oldName");
    auto &tanks = host.addSubsystem("Tanks");
    tanks.persistAs = "T";
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(move(list(&tanks, &oldOwner, &newOwner, &pump, &oldOwner, &newOwner, &tanks, &newOwner, &oldOwner)),
              0);
    EXPECT_THAT(host.worker.commands, ElementsAre("mvdir /old/T"));
    expectNothingIsLeft();
}

TEST_F(MoveMember, AFailedExpansionNeitherStopsNorChangesTheResult) {
    setToolProperty("Move", "mv $extra $Unit");
    ExtraArgument extra;
    extra.answers = {false, true, false};
    args.AddTail(&extra);
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    EXPECT_EQ(move(list(&pump, &oldOwner, &newOwner, &valve, &oldOwner, &newOwner, &pump, &oldOwner, &newOwner)),
              1);
    EXPECT_THAT(host.worker.commands, ElementsAre("mv x Valve.ocl"));
    args.RemoveAll();
}

TEST_F(MoveMember, ARunThatFailsDoesNotChangeTheResult) {
    breakExecute();
    EXPECT_EQ(moveOne(host.addUnit("Pump")), 1);
    EXPECT_THAT(logTexts(), SizeIs(2));
}

TEST_F(MoveMember, InHybridModeTakesTheTemplatesOfTheProvidersName) {
    useProvider();
    host.setTool("None");
    for (const char *tool : {"Basalt", "SCC"}) {
        host.setToolDefault(tool, "Move", CString(tool) + " mv");
        host.setToolDefault(tool, "MoveDirectory", CString(tool) + " mvdir $detail");
        host.setToolDefault(tool, "detail", CString("of ") + tool);
    }
    auto &tanks = host.addSubsystem("Tanks");
    tanks.persistAs = "T";
    EXPECT_EQ(moveOne(host.addUnit("Pump"), true), 1);
    EXPECT_EQ(moveOne(tanks, true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("Basalt mv", "Basalt mvdir of SCC"))
        << "what is left in the template is expanded without the flag";
    EXPECT_EQ(moveOne(tanks, false), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

class MovePackage : public CheckOutFixture {
  protected:
    MovePackage() {
        setToolProperty("Move", "mv $oldName $newName");
        setToolProperty("MoveDirectory", "mvdir $oldName $newName");
        package.persistAs = "Package";
    }
    int move(CMUnitList units, const CString &from = "/old", const CString &to = "/new", bool hybrid = false) {
        return CMMoveMember().movePackageContent(&package, units, from, to, args, diags, hybrid);
    }
    recording::Subsystem &package = host.addSubsystem("Package");
};

TEST_F(MovePackage, TheLogSpeaksOfTheDirectory) {
    setToolProperty("Move", "mv");
    EXPECT_EQ(move(list(&package)), 1);
    const std::string log = "log 4 ../CM/CMSupport/MoveMember: ";
    EXPECT_THAT(calls(), ElementsAre(log + "Executing the following command to move the directory: mv", "run mv",
                                     log + "Move directory command returned the following: "));
    expectNothingIsLeft();
}

TEST_F(MovePackage, ThePackageItselfMovesAsAFileStraightInTheDirectory) {
    move(list(&package));
    EXPECT_THAT(host.worker.commands, ElementsAre("mv /old/Package.osb /new/Package.osb"));
}

TEST_F(MovePackage, AUnitInItMovesAsAFileWithADoubledSeparator) {
    move(list(&host.addUnit("Pump")));
    EXPECT_THAT(host.worker.commands, ElementsAre("mv /old//Pump.ocl /new//Pump.ocl"));
}

TEST_F(MovePackage, AUnitInItWithADirectoryMovesAsADirectory) {
    auto &tanks = host.addSubsystem("Tanks");
    tanks.persistAs = "T";
    move(list(&tanks));
    setToolProperty("MoveDirectory", "");
    move(list(&tanks));
    EXPECT_THAT(host.worker.commands, ElementsAre("mvdir /old/T /new/T", "mv /old/T/Tanks.osb /new/T/Tanks.osb"));
}

TEST_F(MovePackage, TheDirectoriesAreThoseGivenForEveryUnit) {
    setToolProperty("Move", "mv $Unit $olddir $newdir");
    auto &pump = host.addUnit("Pump");
    pump.partsDirectory = "/elsewhere";
    move(list(&package, nullptr, &pump), "/a", "/b");
    EXPECT_THAT(host.worker.commands, ElementsAre("mv Package.osb /a /b", "mv Pump.ocl /a /b"));
}

TEST_F(MovePackage, WithEqualDirectoriesPassesEveryUnitOver) {
    setToolProperty("Move", "");
    EXPECT_EQ(move(list(&package, &host.addUnit("Pump")), "/old", "/old"), 1);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(MovePackage, PassesOverWhatHasNoFileOfItsOwn) {
    auto &inner = host.addUnit("Inner");
    inner.saveUnit = false;
    auto &plan = host.addEmbeddedFile("plan.doc");
    plan.saveUnit = false;
    EXPECT_EQ(move(list(&inner, &plan)), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("mv /old//plan.doc /new//plan.doc"));
}

TEST_F(MovePackage, OnAnEmptyListAsksForTheToolAllTheSame) {
    EXPECT_EQ(move(list()), 1);
    host.setTool("None");
    EXPECT_EQ(move(list()), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

TEST_F(MovePackage, WithoutATemplateEndsAtOnce) {
    setToolProperty("Move", "");
    auto &tanks = host.addSubsystem("Tanks");
    tanks.persistAs = "T";
    EXPECT_EQ(move(list(&tanks, &package, &tanks)), 0);
    EXPECT_THAT(host.worker.commands, SizeIs(1));
    expectNothingIsLeft();
}

TEST_F(MovePackage, FailuresNeitherStopNorChangeTheResult) {
    setToolProperty("Move", "mv $extra $Unit");
    ExtraArgument extra;
    extra.answers = {false, true};
    args.AddTail(&extra);
    EXPECT_EQ(move(list(&package, &host.addUnit("Pump"))), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("mv x Pump.ocl"));
    args.RemoveAll();
}

TEST_F(MovePackage, InHybridModeTakesTheTemplatesOfTheProvidersName) {
    useProvider();
    host.setTool("None");
    host.setToolDefault("Basalt", "Move", "hybrid mv");
    EXPECT_EQ(move(list(&package), "/old", "/new", true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("hybrid mv"));
}

} // namespace
