#include "tests/orchard/storage/Workbench.h"

#include "orchard/change/UnitChange.h"
#include "orchard/storage/UnitSearch.h"

#include <sys/stat.h>

using orchard::FilesBy;
using orchard::UnitChange;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class RenameUnit : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    [[nodiscard]] static bool exists(const std::string &file) { return std::filesystem::exists(file); }
    /// Expects the model on disk to equal the model in memory.
    void expectSaved() {
        std::vector<std::string> paths;
        for (const auto &row : orchard::workspaceUnits(*project)) {
            paths.push_back(row.path + " " + row.file);
            EXPECT_FALSE(row.unit->isModified()) << row.path;
        }
        reopen();
        ASSERT_TRUE(result) << result.problems.front().message();
        EXPECT_THAT(warnings, IsEmpty());
        std::vector<std::string> again;
        for (const auto &row : orchard::workspaceUnits(*project)) {
            again.push_back(row.path + " " + row.file);
        }
        EXPECT_EQ(again, paths);
    }
};

TEST_F(RenameUnit, TakesTheFileAlongAndSavesWhatNamesIt) {
    UnitChange change = UnitChange::rename(*unit("Valve"), "Gate");
    ASSERT_TRUE(change);
    EXPECT_EQ(change.oldPath(), unitFile("Valve.ocl"));
    EXPECT_EQ(change.newPath(), unitFile("Gate.ocl"));
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_TRUE(change.stands());
    EXPECT_FALSE(exists(unitFile("Valve.ocl")));
    EXPECT_THAT(read(unitFile("Gate.ocl")), HasSubstr("<name>Gate</name>"));
    EXPECT_THAT(read(unitFile("Drives.osb")), HasSubstr("\"Gate.ocl\""));
    EXPECT_EQ(IUnit::getByFile("Gate.ocl"), unit("Gate"));
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), nullptr);
    expectSaved();
}

TEST_F(RenameUnit, BeforeItIsFinishedOnlyTheModelHasTheNewName) {
    IUnit *const valve = unit("Valve");
    UnitChange change = UnitChange::rename(*valve, "Gate");
    change.begin();
    EXPECT_EQ(valve->getName(), "Gate");
    EXPECT_EQ(valve->getFileName(), "Gate.ocl");
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
    EXPECT_FALSE(exists(unitFile("Gate.ocl")));
    EXPECT_TRUE(valve->isModified());
    EXPECT_TRUE(unit("Drives")->isModified()) << "its file names the unit's";
    EXPECT_EQ(unit("Gate"), valve);
    change.cancel();
    EXPECT_EQ(unit("Valve"), valve) << "it is found by its name again";
    EXPECT_EQ(valve->getName(), "Valve");
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), valve);
    EXPECT_FALSE(valve->isModified());
    EXPECT_FALSE(unit("Drives")->isModified());
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_FALSE(change.stands());
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
}

TEST_F(RenameUnit, OneThatIsForgottenIsTakenBack) {
    { UnitChange::rename(*unit("Valve"), "Gate").begin(); }
    EXPECT_EQ(unit("Valve")->getFileName(), "Valve.ocl");
}

TEST_F(RenameUnit, AcceptsWhatTheToolHasDone) {
    UnitChange change = UnitChange::rename(*unit("Valve"), "Gate");
    change.begin();
    std::filesystem::rename(unitFile("Valve.ocl"), unitFile("Gate.ocl"));
    edit(unitFile("Gate.ocl"), "<class ", "<!--\n$Revision: 2 $\n-->\n<class ");
    EXPECT_THAT(change.finish(FilesBy::tool), IsEmpty());
    EXPECT_TRUE(change.stands());
    EXPECT_EQ(unit("Gate")->getCMHeader(), "$Revision: 2 $");
    expectSaved();
}

TEST_F(RenameUnit, AToolThatHasDoneNothingTakesItBack) {
    UnitChange change = UnitChange::rename(*unit("Valve"), "Gate");
    change.begin();
    const auto told = change.finish(FilesBy::tool);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), HasSubstr("Valve.ocl: the CM tool has not moved the file"));
    EXPECT_FALSE(change.stands());
    EXPECT_EQ(unit("Valve")->getFileName(), "Valve.ocl");
    expectSaved();
}

TEST_F(RenameUnit, AToolThatHasCopiedLeavesBothFiles) {
    UnitChange change = UnitChange::rename(*unit("Valve"), "Gate");
    change.begin();
    std::filesystem::copy_file(unitFile("Valve.ocl"), unitFile("Gate.ocl"));
    const auto told = change.finish(FilesBy::tool);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), HasSubstr("Valve.ocl: the file still exists"));
    EXPECT_TRUE(change.stands());
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
    expectSaved();
}

TEST_F(RenameUnit, AFileThatIsThereIsNotWrittenOver) {
    write(unitFile("Gate.ocl"), "mine");
    EXPECT_THAT(UnitChange::rename(*unit("Valve"), "Gate").problems().at(0).text, HasSubstr("already"));
    EXPECT_THAT(UnitChange::rename(*unit("Valve"), "Panel").problems().at(0).text,
                HasSubstr("belongs to the unit 'Panel'"));
    EXPECT_EQ(read(unitFile("Gate.ocl")), "mine");
    UnitChange change = UnitChange::rename(*unit("Valve"), "Late");
    change.begin();
    write(unitFile("Late.ocl"), "came in between");
    EXPECT_THAT(change.finish(FilesBy::tool), testing::SizeIs(1));
    EXPECT_FALSE(change.stands());
    EXPECT_EQ(read(unitFile("Late.ocl")), "came in between");
    EXPECT_EQ(unit("Valve")->getFileName(), "Valve.ocl");
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
}

TEST_F(RenameUnit, IsRefusedWhereAFileThatTellsItCanNotBeWritten) {
    ::chmod(unitFile("Drives.osb").c_str(), 0444);
    EXPECT_THAT(UnitChange::rename(*unit("Valve"), "Gate").problems().at(0).text,
                testing::AllOf(HasSubstr("Drives.osb"), HasSubstr("check the unit out")));
    ::chmod(unitFile("Drives.osb").c_str(), 0644);
    ::chmod(unitFile("Valve.ocl").c_str(), 0444);
    EXPECT_THAT(UnitChange::rename(*unit("Valve"), "Gate").problems().at(0).text, HasSubstr("read-only"));
    ::chmod(unitFile("Valve.ocl").c_str(), 0644);
    edit(unitFile("Valve.ocl"), "A motor valve.", "Somebody else's.");
    EXPECT_THAT(UnitChange::rename(*unit("Valve"), "Gate").problems().at(0).text, HasSubstr("another program"));
}

TEST_F(RenameUnit, HostileNamesAndThoseOfTheProjectAndOfStubsAreRefused) {
    for (const char *const name : {"", "a/b", "a\\b", "..", "a$b", "a`b", "a\"b", "a\nb", "a(b?c)", "Valve"}) {
        EXPECT_FALSE(UnitChange::rename(*unit("Valve"), name)) << name;
    }
    EXPECT_FALSE(UnitChange::rename(*project, "Other"));
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Valve"), false).empty());
    EXPECT_FALSE(UnitChange::rename(*unit("Valve"), "Gate"));
}

TEST_F(RenameUnit, AFileThatWasNotNamedAfterTheUnitStays) {
    unit("Valve")->setFileName("v1");
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    UnitChange change = UnitChange::rename(*unit("Valve"), "Gate");
    EXPECT_EQ(change.oldPath(), change.newPath());
    EXPECT_THAT(change.finish(FilesBy::tool), IsEmpty());
    EXPECT_EQ(unit("Gate")->getFileName(), "v1.ocl");
    expectSaved();
}

TEST_F(RenameUnit, AClassInAnothersFileHasOnlyAName) {
    UnitChange change = UnitChange::rename(*unit("AlarmEntry"), "Entry");
    EXPECT_EQ(change.oldPath(), "");
    EXPECT_THAT(change.finish(FilesBy::tool), IsEmpty());
    EXPECT_THAT(read(unitFile("Control/AlarmList.ocl")), HasSubstr("<name>Entry</name>"));
    expectSaved();
}

TEST_F(RenameUnit, AnEmbeddedFileIsItsName) {
    IUnit *const embedded = IUnit::getByFile("wiring.txt");
    EXPECT_THAT(UnitChange::rename(*embedded, "wires").finish(FilesBy::host), IsEmpty());
    EXPECT_EQ(embedded->getName(), "wires.txt");
    EXPECT_EQ(embedded->getFileName(), "wires.txt");
    EXPECT_THAT(read(embedded->getFullFileName().str()), HasSubstr("Terminal  Signal"));
    expectSaved();
}

TEST_F(RenameUnit, ADirectoryOfTheSameNameGoesAlongWithAllInIt) {
    write(unitFile("Control/notes.txt"), "the model doesn't know it");
    UnitChange change = UnitChange::rename(*unit("Control"), "Logic");
    ASSERT_TRUE(change);
    EXPECT_EQ(change.oldPath(), unitFile("Control/Control.osb"));
    EXPECT_EQ(change.newPath(), unitFile("Logic/Logic.osb"));
    ASSERT_EQ(change.files().size(), 2U);
    EXPECT_TRUE(change.files()[1].isDirectory);
    EXPECT_EQ(change.files()[1].to, unitFile("Logic"));
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_FALSE(exists(unitFile("Control")));
    EXPECT_EQ(read(unitFile("Logic/notes.txt")), "the model doesn't know it");
    EXPECT_EQ(IUnit::getByFile("Logic/AlarmList.ocl"), unit("AlarmList"));
    expectSaved();
}

TEST_F(RenameUnit, ADirectoryThatOthersUseKeepsItsName) {
    unit("Operator")->setMYpersAs("Control");
    std::filesystem::rename(unitFile("Operator.osb"), unitFile("Control/Operator.osb"));
    std::filesystem::rename(unitFile("Panel.ocl"), unitFile("Control/Panel.ocl"));
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    UnitChange change = UnitChange::rename(*unit("Control"), "Logic");
    ASSERT_TRUE(change);
    EXPECT_EQ(change.newPath(), unitFile("Control/Logic.osb"));
    ASSERT_EQ(change.files().size(), 1U);
    EXPECT_FALSE(change.files()[0].isDirectory);
    ASSERT_NE(change.files()[0].sharedWith, nullptr);
    EXPECT_THAT(change.files()[0].sharedWith->getName().str(), testing::AnyOf("Operator", "Panel"));
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_TRUE(exists(unitFile("Control/Panel.ocl")));
    EXPECT_TRUE(exists(unitFile("Control/AlarmList.ocl")));
    EXPECT_FALSE(exists(unitFile("Logic")));
    expectSaved();
}

TEST_F(RenameUnit, AFileThatTheToolHasTakenElsewhereIsToldAndTheModelStaysAsItWas) {
    UnitChange change = UnitChange::rename(*unit("Valve"), "Gate");
    change.begin();
    std::filesystem::rename(unitFile("Valve.ocl"), path("Valve.ocl"));
    const auto told = change.finish(FilesBy::tool);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), testing::AllOf(HasSubstr("Valve.ocl: the file is neither here nor at"),
                                                  HasSubstr("Gate.ocl: the CM tool")));
    EXPECT_FALSE(change.isComplete());
    EXPECT_FALSE(change.stands());
    EXPECT_EQ(unit("Valve")->getFileName(), "Valve.ocl");
    EXPECT_FALSE(exists(unitFile("Gate.ocl"))) << "nothing is written in place of the file";
    std::filesystem::rename(path("Valve.ocl"), unitFile("Valve.ocl"));
    expectSaved();
}

TEST_F(RenameUnit, AUnitThatHasNoFileYetMissesNone) {
    std::filesystem::remove(unitFile("Valve.ocl"));
    UnitChange change = UnitChange::rename(*unit("Valve"), "Gate");
    ASSERT_TRUE(change) << change.problems().front().message();
    EXPECT_THAT(change.finish(FilesBy::tool), IsEmpty());
    EXPECT_TRUE(change.isComplete());
    EXPECT_TRUE(change.stands());
    expectSaved();
}

TEST_F(RenameUnit, AToolThatWasStoppedBetweenFileAndDirectoryTakesItBack) {
    UnitChange change = UnitChange::rename(*unit("Control"), "Logic");
    change.begin();
    std::filesystem::rename(unitFile("Control/Control.osb"), unitFile("Control/Logic.osb"));
    EXPECT_EQ(change.finish(FilesBy::tool).size(), 1U);
    EXPECT_FALSE(change.stands());
    EXPECT_FALSE(exists(unitFile("Logic")));
    EXPECT_TRUE(exists(unitFile("Control/Control.osb")));
    expectSaved();
}

TEST_F(RenameUnit, AToolThatHasMovedTheDirectoryOnlyIsHelpedOn) {
    UnitChange change = UnitChange::rename(*unit("Control"), "Logic");
    change.begin();
    std::filesystem::rename(unitFile("Control"), unitFile("Logic"));
    const auto told = change.finish(FilesBy::tool);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), HasSubstr("Logic/Control.osb: the CM tool has left the file behind"));
    EXPECT_TRUE(change.stands());
    EXPECT_TRUE(exists(unitFile("Logic/Logic.osb")));
    expectSaved();
}

TEST_F(RenameUnit, WhereTheOwnersFileCanNotBeSavedAllIsAsBefore) {
    UnitChange change = UnitChange::rename(*unit("Valve"), "Gate");
    change.begin();
    ::chmod(unitFile("Drives.osb").c_str(), 0444);
    EXPECT_THAT(change.finish(FilesBy::host), testing::SizeIs(1));
    EXPECT_FALSE(change.stands());
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
    EXPECT_FALSE(exists(unitFile("Gate.ocl")));
    EXPECT_EQ(unit("Valve")->getFileName(), "Valve.ocl");
    expectSaved();
}

TEST_F(RenameUnit, AnOwnerWhoseFileCanNotBeWrittenKeepsTheFileNamesOfItsParts) {
    IUnit *const drives = unit("Drives");
    EXPECT_EQ(drives->keepsPartFileName(""), 0);
    EXPECT_EQ(drives->keepsPartFileName("a$b"), 1);
    ::chmod(unitFile("Drives.osb").c_str(), 0444);
    drives->updateMode("");
    EXPECT_EQ(drives->keepsPartFileName(""), 1);
}

TEST_F(RenameUnit, AnOwnerThatIsNotLoadedKeepsTheFileNamesOfItsParts) {
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Drives"), false).empty());
    EXPECT_EQ(unit("Drives")->keepsPartFileName(""), 1);
}

TEST_F(RenameUnit, ADirectoryOfAnotherNameKeepsIt) {
    unit("Operator")->setMYpersAs("Desk");
    std::filesystem::create_directories(unitFile("Desk"));
    std::filesystem::rename(unitFile("Operator.osb"), unitFile("Desk/Operator.osb"));
    std::filesystem::rename(unitFile("Panel.ocl"), unitFile("Desk/Panel.ocl"));
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    UnitChange change = UnitChange::rename(*unit("Operator"), "Console");
    EXPECT_EQ(change.newPath(), unitFile("Desk/Console.osb"));
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_TRUE(exists(unitFile("Desk/Panel.ocl")));
    expectSaved();
}

TEST_F(RenameUnit, IsRefusedWhereTheDirectoryOrAFileInItIsThereAlready) {
    write(unitFile("Control/Logic.osb"), "mine");
    EXPECT_THAT(UnitChange::rename(*unit("Control"), "Logic").problems().at(0).text,
                HasSubstr("the file " + unitFile("Control/Logic.osb") + " already exists"));
    std::filesystem::create_directory(unitFile("Order"));
    EXPECT_THAT(UnitChange::rename(*unit("Control"), "Order").problems().at(0).text,
                HasSubstr("the directory " + unitFile("Order") + " already exists"));
}

TEST_F(RenameUnit, AnEmptyDirectoryThatWasMadeMeanwhileIsNotInTheWay) {
    write(unitFile("Control/notes.txt"), "the model doesn't know it");
    UnitChange change = UnitChange::rename(*unit("Control"), "Logic");
    change.begin();
    std::filesystem::create_directory(unitFile("Logic"));
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_TRUE(exists(unitFile("Logic/notes.txt")));
    EXPECT_FALSE(exists(unitFile("Control")));
    expectSaved();
}

TEST_F(RenameUnit, ADirectoryComesBackWhereTheOwnersFileCanNotBeSaved) {
    write(unitFile("Control/notes.txt"), "the model doesn't know it");
    UnitChange change = UnitChange::rename(*unit("Control"), "Logic");
    change.begin();
    ::chmod(unitFile("Pump.ory").c_str(), 0444);
    EXPECT_THAT(change.finish(FilesBy::host), testing::SizeIs(1));
    EXPECT_FALSE(change.stands());
    EXPECT_TRUE(exists(unitFile("Control/Control.osb")));
    EXPECT_TRUE(exists(unitFile("Control/notes.txt")));
    EXPECT_FALSE(exists(unitFile("Logic")));
    expectSaved();
}

TEST_F(RenameUnit, ACopyWithANewHeaderIsTheUnitsFile) {
    UnitChange change = UnitChange::rename(*unit("Valve"), "Gate");
    change.begin();
    std::filesystem::copy_file(unitFile("Valve.ocl"), unitFile("Gate.ocl"));
    edit(unitFile("Gate.ocl"), "<class ", "<!--\n$Revision: 2 $\n-->\n<class ");
    EXPECT_THAT(change.finish(FilesBy::tool), testing::SizeIs(1));
    EXPECT_TRUE(change.stands());
    EXPECT_THAT(read(unitFile("Gate.ocl")), HasSubstr("$Revision: 2 $"));
    EXPECT_EQ(unit("Gate")->getCMHeader(), "$Revision: 2 $");
}

TEST_F(RenameUnit, ADirectoryInTheWayIsNoCopyOfTheTools) {
    UnitChange change = UnitChange::rename(*unit("Valve"), "Gate");
    change.begin();
    std::filesystem::create_directory(unitFile("Gate.ocl"));
    const auto told = change.finish(FilesBy::tool);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), HasSubstr("this file is in the way; the unit's file is still"));
    EXPECT_FALSE(change.stands());
    std::filesystem::remove(unitFile("Gate.ocl"));
    expectSaved();
}

TEST_F(RenameUnit, AFileThatTheToolHasMovedBringsItsModeAlong) {
    UnitChange change = UnitChange::rename(*unit("Valve"), "v2");
    change.begin();
    std::filesystem::rename(unitFile("Valve.ocl"), unitFile("v2.ocl"));
    ::chmod(unitFile("v2.ocl").c_str(), 0444);
    EXPECT_THAT(change.finish(FilesBy::tool), testing::SizeIs(1)) << "its new name can't be written into it";
    EXPECT_TRUE(change.stands());
    EXPECT_TRUE(element(unit("v2")).isReadOnly());
}

TEST_F(RenameUnit, ADirectoryInWhichTheFileCanNotHaveItsNewNameComesBack) {
    UnitChange change = UnitChange::rename(*unit("Control"), "Logic");
    change.begin();
    write(unitFile("Control/Logic.osb"), "came in between");
    const auto told = change.finish(FilesBy::host);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), HasSubstr("Logic/Control.osb: the file can't be moved to"));
    EXPECT_FALSE(change.stands());
    EXPECT_FALSE(exists(unitFile("Logic")));
    EXPECT_EQ(read(unitFile("Control/Logic.osb")), "came in between");
    expectSaved();
}

} // namespace
