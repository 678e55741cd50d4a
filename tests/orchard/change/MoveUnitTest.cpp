// Longer than other files: every kind of move is tested on the same workbench.
#include "tests/orchard/storage/Workbench.h"

#include "orchard/change/Recovery.h"
#include "orchard/change/UnitChange.h"
#include "orchard/storage/UnitSearch.h"

#include <set>
#include <sys/stat.h>

using orchard::FilesBy;
using orchard::UnitChange;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class MoveUnit : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    [[nodiscard]] static bool exists(const std::string &file) { return std::filesystem::exists(file); }
    [[nodiscard]] std::vector<std::string> places() const {
        std::vector<std::string> places;
        for (const auto &row : orchard::workspaceUnits(*project)) {
            places.push_back(row.path + " " + row.file);
        }
        return places;
    }
    void expectSaved() {
        const auto before = places();
        for (const auto &row : orchard::workspaceUnits(*project)) {
            EXPECT_FALSE(row.unit->isModified()) << row.path;
            EXPECT_TRUE(exists(row.unit->getFullFileName().str())) << row.path;
            EXPECT_EQ(IUnit::getByFile(row.unit->getNameForReposFiles()), row.unit) << row.path;
        }
        reopen();
        ASSERT_TRUE(result) << result.problems.front().message();
        EXPECT_THAT(warnings, IsEmpty());
        EXPECT_EQ(places(), before);
    }
    [[nodiscard]] std::string refusal(std::string_view what, std::string_view where) const {
        const UnitChange change = UnitChange::move({unit(what)}, *unit(where));
        return change ? std::string() : change.problems().front().text;
    }
};

TEST_F(MoveUnit, TakesTheFileToTheNewOwnersDirectory) {
    IUnit *const valve = unit("Valve");
    UnitChange change = UnitChange::move({valve}, *unit("Control"));
    ASSERT_TRUE(change);
    EXPECT_EQ(change.oldPath(), unitFile("Valve.ocl"));
    EXPECT_EQ(change.newPath(), unitFile("Control/Valve.ocl"));
    ASSERT_EQ(change.owners().size(), 1U);
    EXPECT_EQ(change.owners()[0].unit, valve);
    EXPECT_EQ(change.owners()[0].oldOwner, unit("Drives"));
    EXPECT_EQ(change.owners()[0].newOwner, unit("Control"));
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_EQ(valve->getOwner(), unit("Control"));
    EXPECT_FALSE(exists(unitFile("Valve.ocl")));
    EXPECT_THAT(read(unitFile("Drives.osb")), testing::Not(HasSubstr("Valve.ocl")));
    EXPECT_THAT(read(unitFile("Control/Control.osb")), HasSubstr("Valve.ocl"));
    EXPECT_THAT(read(unitFile("Control/Valve.ocl")), HasSubstr(unit("Control")->getOrId().getOrIdStr().str()));
    expectSaved();
}

TEST_F(MoveUnit, BetweenOwnersOfOneDirectoryMovesNoFile) {
    UnitChange change = UnitChange::move({unit("Valve")}, *unit("Operator"));
    EXPECT_THAT(change.files(), IsEmpty());
    EXPECT_THAT(change.finish(FilesBy::tool), IsEmpty());
    EXPECT_EQ(unit("Valve")->getOwner(), unit("Operator"));
    expectSaved();
}

TEST_F(MoveUnit, ASubsystemWithoutADirectoryTakesEachFileBelowAlong) {
    UnitChange change = UnitChange::move({unit("Drives")}, *unit("Control"));
    std::set<std::string> to;
    for (const auto &file : change.files()) {
        EXPECT_FALSE(file.isDirectory);
        to.insert(file.to);
    }
    EXPECT_EQ(to,
              (std::set<std::string>{unitFile("Control/Drives.osb"), unitFile("Control/Pump.ocl"),
                                     unitFile("Control/Valve.ocl"), unitFile("Control/Sensors.osb"),
                                     unitFile("Control/LevelSensor.ocl"), unitFile("Control/FlowSensor.ocl")}));
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_EQ(orchard::pathInModel(*unit("FlowSensor")), "Control/Drives/Sensors/FlowSensor");
    expectSaved();
}

TEST_F(MoveUnit, ADirectoryGoesAsAWholeWithWhatTheModelDoesNotKnow) {
    write(unitFile("Control/notes.txt"), "unknown");
    UnitChange inner = UnitChange::move({unit("Sensors")}, *unit("Control"));
    ASSERT_THAT(inner.finish(FilesBy::host), IsEmpty());
    unit("Operator")->setMYpersAs("Desk");
    std::filesystem::create_directories(unitFile("Desk"));
    std::filesystem::rename(unitFile("Operator.osb"), unitFile("Desk/Operator.osb"));
    std::filesystem::rename(unitFile("Panel.ocl"), unitFile("Desk/Panel.ocl"));
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    UnitChange change = UnitChange::move({unit("Control")}, *unit("Operator"));
    ASSERT_TRUE(change) << change.problems()[0].message();
    ASSERT_EQ(change.files().size(), 1U);
    EXPECT_TRUE(change.files()[0].isDirectory);
    EXPECT_EQ(change.files()[0].from, unitFile("Control"));
    EXPECT_EQ(change.files()[0].to, unitFile("Desk/Control"));
    EXPECT_EQ(change.newPath(), unitFile("Desk/Control/Control.osb"));
    EXPECT_GT(change.units().size(), 5U);
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_FALSE(exists(unitFile("Control")));
    EXPECT_EQ(read(unitFile("Desk/Control/notes.txt")), "unknown");
    EXPECT_EQ(unit("FlowSensor")->getFullFileName(), unitFile("Desk/Control/FlowSensor.ocl"));
    expectSaved();
}

TEST_F(MoveUnit, ADirectoryThatTheToolHasMovedIsAccepted) {
    UnitChange change = UnitChange::move({unit("Control")}, *unit("Drives"));
    EXPECT_THAT(change.files(), IsEmpty()) << "Drives has the same directory as the project";
    change.cancel();
    unit("Drives")->setMYpersAs("Motion");
    const char *const parts[] = {"Drives.osb",  "Pump.ocl",        "Valve.ocl",
                                 "Sensors.osb", "LevelSensor.ocl", "FlowSensor.ocl"};
    std::filesystem::create_directories(unitFile("Motion"));
    for (const char *const file : parts) {
        std::filesystem::rename(unitFile(file), unitFile(std::string("Motion/") + file));
    }
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    UnitChange move = UnitChange::move({unit("Control")}, *unit("Drives"));
    move.begin();
    std::filesystem::rename(unitFile("Control"), unitFile("Motion/Control"));
    EXPECT_THAT(move.finish(FilesBy::tool), IsEmpty());
    expectSaved();
}

TEST_F(MoveUnit, ADirectoryThatOthersUseIsMovedFileByFile) {
    unit("Operator")->setMYpersAs("Control"); // beside Control, with the same directory
    std::filesystem::rename(unitFile("Operator.osb"), unitFile("Control/Operator.osb"));
    std::filesystem::rename(unitFile("Panel.ocl"), unitFile("Control/Panel.ocl"));
    unit("Drives")->setMYpersAs("Motion");
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    std::filesystem::create_directories(unitFile("Motion"));
    for (const char *const file :
         {"Drives.osb", "Pump.ocl", "Valve.ocl", "Sensors.osb", "LevelSensor.ocl", "FlowSensor.ocl"}) {
        std::filesystem::rename(unitFile(file), unitFile(std::string("Motion/") + file));
    }
    UnitChange change = UnitChange::move({unit("Control")}, *unit("Drives"));
    ASSERT_EQ(change.files().size(), 4U);
    EXPECT_NE(change.files()[0].sharedWith, nullptr);
    EXPECT_EQ(change.files()[1].sharedWith, nullptr) << "a class has no directory";
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_TRUE(exists(unitFile("Control/Panel.ocl"))) << "it is not Control's";
    EXPECT_TRUE(exists(unitFile("Motion/Control/AlarmList.ocl")));
    expectSaved();
}

TEST_F(MoveUnit, WhereTheToolHasDoneNothingTheModelIsAsBefore) {
    const auto before = places();
    UnitChange change = UnitChange::move({unit("Valve"), unit("Pump.ocl")}, *unit("Control"));
    change.begin();
    EXPECT_EQ(unit("Valve")->getFullFileName(), unitFile("Control/Valve.ocl"));
    EXPECT_EQ(change.finish(FilesBy::tool).size(), 1U);
    EXPECT_FALSE(change.stands());
    EXPECT_EQ(places(), before);
    expectSaved();
}

TEST_F(MoveUnit, WhatTheToolHasLeftBehindFollows) {
    UnitChange change = UnitChange::move({unit("Valve"), unit("Pump.ocl")}, *unit("Control"));
    change.begin();
    std::filesystem::rename(unitFile("Valve.ocl"), unitFile("Control/Valve.ocl"));
    const auto told = change.finish(FilesBy::tool);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), HasSubstr("Pump.ocl: the CM tool has left the file behind"));
    EXPECT_TRUE(change.stands());
    expectSaved();
}

TEST_F(MoveUnit, WhatTheToolHasTakenElsewhereIsToldBesideWhatHasArrived) {
    UnitChange change = UnitChange::move({unit("Valve"), unit("Pump.ocl")}, *unit("Control"));
    change.begin();
    std::filesystem::rename(unitFile("Valve.ocl"), unitFile("Control/Valve.ocl"));
    std::filesystem::rename(unitFile("Pump.ocl"), path("Pump.ocl"));
    const auto told = change.finish(FilesBy::tool);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), testing::AllOf(HasSubstr("Pump.ocl: the file is neither here nor at"),
                                                  HasSubstr("Control/Pump.ocl")));
    EXPECT_FALSE(change.isComplete());
    EXPECT_TRUE(change.stands()) << "Valve is there";
    EXPECT_FALSE(exists(unitFile("Control/Pump.ocl")));
    std::filesystem::rename(path("Pump.ocl"), unitFile("Control/Pump.ocl"));
    reopen();
    EXPECT_EQ(orchard::pathInModel(*unit("Pump.ocl")), "Control/Pump");
}

TEST_F(MoveUnit, AFileThatCanNotBeMovedTakesAllOfItBack) {
    const auto before = places();
    UnitChange change = UnitChange::move({unit("Valve"), unit("Drives")}, *unit("Control"));
    change.begin();
    std::filesystem::create_directory(unitFile("Control/Valve.ocl"));
    const std::string valve = read(unitFile("Valve.ocl"));
    const auto told = change.finish(FilesBy::host);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].text,
                HasSubstr("this file is in the way; the unit's file is still " + unitFile("Valve.ocl")));
    EXPECT_FALSE(change.stands());
    EXPECT_EQ(places(), before);
    EXPECT_EQ(read(unitFile("Valve.ocl")), valve);
    std::filesystem::remove(unitFile("Control/Valve.ocl"));
    expectSaved();
}

TEST_F(MoveUnit, WhereTheFormerOwnersFileCanNotBeSavedAllIsAsBefore) {
    const auto before = places();
    UnitChange change = UnitChange::move({unit("Valve"), unit("Pump.ocl")}, *unit("Control"));
    change.begin();
    ::chmod(unitFile("Drives.osb").c_str(), 0444);
    const auto told = change.finish(FilesBy::host);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].text, HasSubstr("read-only"));
    EXPECT_FALSE(change.stands());
    EXPECT_EQ(places(), before);
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
    EXPECT_FALSE(exists(unitFile("Control/Valve.ocl")));
    expectSaved();
}

TEST_F(MoveUnit, UnitsKeptElsewhereStayWhereTheyAre) {
    write(path("lib/Gear.ocl"),
          "<class format=\"1\" id=\"00000000-0000-0000-0000-0000000000aa\">\n  <name>Gear</name>\n</class>\n");
    edit(unitFile("Drives.osb"), "</subsystem>",
         "<unit kind=\"class\" id=\"00000000-0000-0000-0000-0000000000aa\" file=\"../lib/Gear.ocl\" "
         "external=\"yes\"/>\n</subsystem>");
    reopen();
    ASSERT_EQ(unit("Gear")->getFullFileName(), path("lib/Gear.ocl"));
    EXPECT_THAT(UnitChange::move({unit("Drives")}, *unit("Control")).finish(FilesBy::host), IsEmpty());
    EXPECT_EQ(unit("Gear")->getFullFileName(), path("lib/Gear.ocl"));
    EXPECT_TRUE(unit("Gear")->isExternalUnitRecursive());
    EXPECT_THAT(read(unitFile("Control/Drives.osb")), HasSubstr("\"../../lib/Gear.ocl\""));
    expectSaved();
}

TEST_F(MoveUnit, WhatCanNotBeIsRefused) {
    EXPECT_THAT(refusal("Drives", "Sensors"), HasSubstr("a unit can't contain itself"));
    EXPECT_THAT(refusal("Drives", "Drives"), HasSubstr("a unit can't contain itself"));
    EXPECT_THAT(refusal("Control", "Valve"), HasSubstr("a subsystem can't be in a class"));
    EXPECT_THAT(refusal("Valve", "Drives"), HasSubstr("nothing to move"));
    EXPECT_THAT(UnitChange::move({project}, *unit("Drives")).problems().at(0).text,
                HasSubstr("it is the project itself"));
    write(unitFile("Control/Valve.ocl"), "mine");
    EXPECT_THAT(refusal("Valve", "Control"), HasSubstr("already exists"));
    ::chmod(unitFile("Control/Control.osb").c_str(), 0444);
    EXPECT_THAT(refusal("Pump.ocl", "Control"), HasSubstr("can't be written: the file is read-only"));
    EXPECT_EQ(read(unitFile("Control/Valve.ocl")), "mine");
}

TEST_F(MoveUnit, IsRefusedWithAStubWhosePartsAreNotKnown) {
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Sensors"), false).empty());
    EXPECT_THAT(refusal("Drives", "Control"), HasSubstr("isn't loaded"));
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Control"), false).empty());
    EXPECT_THAT(refusal("Valve", "Control"), HasSubstr("isn't loaded"));
}

TEST_F(MoveUnit, AUnitThatMayNotBeWrittenMovesAndTellsItsOwnerLater) {
    ::chmod(unitFile("Valve.ocl").c_str(), 0444);
    unit("Valve")->updateMode("");
    EXPECT_THAT(UnitChange::move({unit("Valve")}, *unit("Control")).finish(FilesBy::host), IsEmpty());
    EXPECT_THAT(read(unitFile("Control/Valve.ocl")), HasSubstr(unit("Drives")->getOrId().getOrIdStr().str()));
    expectSaved();
}

TEST_F(MoveUnit, UnsavedChangesGoAlong) {
    orchard::setDescription(*unit("Valve"), "changed");
    EXPECT_THAT(UnitChange::move({unit("Valve")}, *unit("Control")).finish(FilesBy::host), IsEmpty());
    EXPECT_THAT(read(unitFile("Control/Valve.ocl")), HasSubstr("changed"));
}

TEST_F(MoveUnit, ManyAtOnceKeepTheirOrderAndComeBackToTheirPlaces) {
    const auto before = places();
    UnitChange change = UnitChange::move(
        {unit("FlowSensor"), unit("Valve"), unit("Pump.ocl"), unit("LevelSensor")}, *unit("Control"));
    change.begin();
    const auto inside = orchard::elementsInside(*unit("Control"));
    ASSERT_GE(inside.size(), 4U);
    EXPECT_EQ(inside[inside.size() - 4], unit("FlowSensor"));
    EXPECT_EQ(inside.back(), unit("LevelSensor"));
    change.cancel();
    EXPECT_EQ(places(), before);
}

TEST_F(MoveUnit, TheDirectoryOfPartsIsThatOfTheOwnersFile) {
    EXPECT_EQ(unit("Drives")->getPartsDirectory(), path("Pump_ory"));
    EXPECT_EQ(unit("Control")->getPartsDirectory(), unitFile("Control"));
    EXPECT_EQ(project->getPartsDirectory(), path("Pump_ory"));
}

TEST_F(MoveUnit, WhereASecondOwnersFileCanNotBeSavedTheFirstGetsItsTextBack) {
    const auto before = places();
    const std::string sensors = read(unitFile("Sensors.osb"));
    UnitChange change = UnitChange::move({unit("FlowSensor"), unit("Valve")}, *unit("Control"));
    change.begin();
    ::chmod(unitFile("Drives.osb").c_str(), 0444);
    const auto told = change.finish(FilesBy::host);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), testing::AllOf(HasSubstr("Drives.osb"), HasSubstr("read-only")));
    EXPECT_FALSE(change.stands());
    EXPECT_FALSE(change.isOpen());
    EXPECT_EQ(places(), before);
    EXPECT_EQ(read(unitFile("Sensors.osb")), sensors);
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
    EXPECT_TRUE(exists(unitFile("FlowSensor.ocl")));
    expectSaved();
}

TEST_F(MoveUnit, WhereTheToolHasMovedTheFileAnOwnerThatCanNotBeSavedLeavesTheChangeOpen) {
    const std::string control = read(unitFile("Control/Control.osb"));
    UnitChange change = UnitChange::move({unit("Valve")}, *unit("Control"));
    change.begin(FilesBy::tool, "move Valve Control");
    std::filesystem::rename(unitFile("Valve.ocl"), unitFile("Control/Valve.ocl"));
    ::chmod(unitFile("Drives.osb").c_str(), 0444);
    const auto told = change.finish(FilesBy::tool);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), HasSubstr("Drives.osb: the unit's file could not be saved: the file is read"));
    EXPECT_TRUE(change.isOpen());
    EXPECT_FALSE(change.isComplete());
    EXPECT_EQ(read(unitFile("Control/Control.osb")), control) << "the other owner is not saved";
    EXPECT_EQ(orchard::unfinishedChange(path("Pump.orp")).command, "move Valve Control");
    EXPECT_THAT(UnitChange::rename(*unit("Panel"), "Board").begin().at(0).text, HasSubstr("not finished"));
    orchard::closeAllProjects();
    ::chmod(unitFile("Drives.osb").c_str(), 0644);
    EXPECT_EQ(orchard::recover(path("Pump.orp"), orchard::Recover::byWhatIsThere).outcome,
              orchard::Recovered::Outcome::finished);
    open();
    EXPECT_EQ(orchard::pathInModel(*unit("Valve")), "Control/Valve");
    expectSaved();
}

TEST_F(MoveUnit, BothOwnersAreChangedUntilItIsFinishedOrTakenBack) {
    UnitChange change = UnitChange::move({unit("Valve")}, *unit("Control"));
    EXPECT_FALSE(unit("Drives")->isModified());
    change.begin();
    EXPECT_TRUE(unit("Drives")->isModified());
    EXPECT_TRUE(unit("Control")->isModified());
    change.cancel();
    EXPECT_FALSE(unit("Drives")->isModified());
    EXPECT_FALSE(unit("Control")->isModified());
}

TEST_F(MoveUnit, WhoNamesAFileKeptElsewhereBelowTheUnitNamesItAnew) {
    write(path("lib/Gear.ocl"),
          "<class format=\"1\" id=\"00000000-0000-0000-0000-0000000000aa\">\n  <name>Gear</name>\n</class>\n");
    edit(unitFile("Sensors.osb"), "</subsystem>",
         "<unit kind=\"class\" id=\"00000000-0000-0000-0000-0000000000aa\" file=\"../lib/Gear.ocl\" "
         "external=\"yes\"/>\n</subsystem>");
    reopen();
    UnitChange change = UnitChange::move({unit("Drives")}, *unit("Control"));
    EXPECT_EQ(unit("Gear")->getFullFileName(), path("lib/Gear.ocl")) << "a plan changes nothing";
    change.begin();
    EXPECT_EQ(unit("Gear")->getFullFileName(), path("lib/Gear.ocl"));
    EXPECT_TRUE(unit("Sensors")->isModified());
    change.cancel();
    EXPECT_EQ(unit("Gear")->getFullFileName(), path("lib/Gear.ocl"));
    EXPECT_FALSE(unit("Sensors")->isModified());
    EXPECT_THAT(UnitChange::move({unit("Drives")}, *unit("Control")).finish(FilesBy::host), IsEmpty());
    EXPECT_THAT(read(unitFile("Control/Sensors.osb")), HasSubstr("\"../../lib/Gear.ocl\""));
    expectSaved();
}

TEST_F(MoveUnit, OfTwoFilesOfOneNameIntoOneDirectoryIsRefused) {
    unit("AlarmList")->setFileName("Valve");
    unit("Operator")->setMYpersAs("Desk");
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    const UnitChange change = UnitChange::move({unit("Valve"), unit("AlarmList")}, *unit("Operator"));
    ASSERT_EQ(change.problems().size(), 1U);
    EXPECT_THAT(change.problems()[0].text,
                HasSubstr("two units would have the file " + unitFile("Desk/Valve.ocl")));
}

TEST_F(MoveUnit, TheDirectoryToGoIntoIsMadeForTheToolAndGoesIfItIsTakenBack) {
    unit("Operator")->setMYpersAs("Room/Desk");
    for (const char *const name : {"Valve", "Control"}) {
        UnitChange change = UnitChange::move({unit(name)}, *unit("Operator"));
        ASSERT_TRUE(change) << change.problems().front().message();
        EXPECT_FALSE(exists(unitFile("Room")));
        change.begin();
        EXPECT_TRUE(exists(unitFile("Room/Desk"))) << name;
        change.cancel();
        EXPECT_FALSE(exists(unitFile("Room"))) << name;
    }
}

TEST_F(MoveUnit, AFileThatHasNoDirectoryToGoIntoAnyMoreTakesItBack) {
    const auto before = places();
    UnitChange change = UnitChange::move({unit("Valve")}, *unit("Control"));
    change.begin();
    std::filesystem::rename(unitFile("Control"), path("Control"));
    write(unitFile("Control"), "a file where the directory was");
    const auto told = change.finish(FilesBy::host);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), testing::AllOf(HasSubstr("Valve.ocl: the file can't be moved to"),
                                                  HasSubstr("Control/Valve.ocl")));
    EXPECT_FALSE(change.stands());
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
    std::filesystem::remove(unitFile("Control"));
    std::filesystem::rename(path("Control"), unitFile("Control"));
    EXPECT_EQ(places(), before);
    expectSaved();
}

TEST_F(MoveUnit, UnitsOfTwoProjectsAreNotMixed) {
    ASSERT_EQ(orchard::createSampleProject(path("Other")).error, "");
    const orchard::OpenResult other = orchard::openProject(path("Other.orp"));
    ASSERT_TRUE(other) << other.problems.front().message();
    IUnit *const theirs = orchard::findUnit(*other.project, "Control").unit;
    ASSERT_NE(theirs, nullptr);
    EXPECT_THAT(UnitChange::move({unit("Valve")}, *theirs).problems().at(0).text,
                HasSubstr("not in the same project"));
    EXPECT_THAT(UnitChange::remove({unit("Valve"), theirs}).problems().at(0).text,
                HasSubstr("not in the same project"));
}

TEST_F(MoveUnit, WhatIsInTheWayBesideWhatHasArrivedIsNotWrittenOver) {
    orchard::setDescription(*unit("Pump.ocl"), "changed");
    UnitChange change = UnitChange::move({unit("Valve"), unit("Pump.ocl")}, *unit("Control"));
    change.begin();
    std::filesystem::rename(unitFile("Valve.ocl"), unitFile("Control/Valve.ocl"));
    const std::string mine = "<!--\n$Revision: 9 $\n-->\n<class/>\n";
    const std::string header = unit("Pump.ocl")->getCMHeader().str();
    write(unitFile("Control/Pump.ocl"), mine);
    const auto told = change.finish(FilesBy::tool);
    ASSERT_FALSE(told.empty());
    EXPECT_THAT(told[0].message(), HasSubstr("Control/Pump.ocl: this file is in the way"));
    EXPECT_TRUE(change.stands()) << "Valve is there";
    EXPECT_EQ(read(unitFile("Control/Pump.ocl")), mine);
    EXPECT_EQ(unit("Pump.ocl")->getCMHeader().str(), header) << "that file's is not the unit's";
    EXPECT_TRUE(exists(unitFile("Pump.ocl")));
}

TEST_F(MoveUnit, WhatCanNotFollowBesideWhatHasArrivedIsToldAndStaysOnDisk) {
    unit("Operator")->setMYpersAs("Desk");
    unit("Sensors")->setMYpersAs("Inner");
    std::filesystem::create_directories(unitFile("Desk"));
    std::filesystem::create_directories(unitFile("Inner"));
    for (const std::string file : {"Operator.osb", "Panel.ocl"}) {
        std::filesystem::rename(unitFile(file), unitFile("Desk/" + file));
    }
    for (const std::string file : {"Sensors.osb", "LevelSensor.ocl", "FlowSensor.ocl"}) {
        std::filesystem::rename(unitFile(file), unitFile("Inner/" + file));
    }
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    UnitChange change = UnitChange::move({unit("Valve"), unit("Sensors")}, *unit("Operator"));
    ASSERT_TRUE(change) << change.problems().front().message();
    change.begin();
    std::filesystem::rename(unitFile("Valve.ocl"), unitFile("Desk/Valve.ocl"));
    write(unitFile("Desk/Inner"), "a file where the directory was to be");
    const auto told = change.finish(FilesBy::tool);
    std::string all;
    for (const auto &problem : told) {
        all += problem.message() + "\n";
    }
    EXPECT_THAT(all,
                HasSubstr("Inner/Sensors.osb: the file can't be moved to " + unitFile("Desk/Inner/Sensors.osb")));
    EXPECT_TRUE(change.stands());
    EXPECT_TRUE(change.isOpen());
    EXPECT_TRUE(exists(unitFile("Inner/Sensors.osb")));
}

TEST_F(MoveUnit, OfADirectoryThatTheToolHasBegunToMoveTheRestFollows) {
    unit("Operator")->setMYpersAs("Desk");
    std::filesystem::create_directories(unitFile("Desk/Control"));
    std::filesystem::rename(unitFile("Operator.osb"), unitFile("Desk/Operator.osb"));
    std::filesystem::rename(unitFile("Panel.ocl"), unitFile("Desk/Panel.ocl"));
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    std::filesystem::remove(unitFile("Desk/Control"));
    UnitChange change = UnitChange::move({unit("Control")}, *unit("Operator"));
    ASSERT_TRUE(change) << change.problems().front().message();
    change.begin();
    std::filesystem::create_directories(unitFile("Desk/Control"));
    std::filesystem::rename(unitFile("Control/Control.osb"), unitFile("Desk/Control/Control.osb"));
    EXPECT_FALSE(change.finish(FilesBy::tool).empty());
    EXPECT_TRUE(change.stands());
    EXPECT_TRUE(exists(unitFile("Desk/Control/AlarmList.ocl")));
    EXPECT_FALSE(exists(unitFile("Control/AlarmList.ocl")));
    expectSaved();
}

TEST_F(MoveUnit, DeeperThanAModelCanBeReadIsRefused) {
    const auto chain = [this](char letter, int length) {
        const auto id = [letter](int at) {
            const std::string number = std::to_string(at);
            return "00000000-0000-0000-00" + std::string(letter == 'A' ? "aa" : "bb") + "-" +
                   std::string(12 - number.size(), '0') + number;
        };
        const auto entry = [&](int at) {
            return "<unit kind=\"subsystem\" id=\"" + id(at) + "\" file=\"" + letter + std::to_string(at) +
                   ".osb\"/>\n";
        };
        for (int at = 1; at <= length; ++at) {
            write(unitFile(letter + std::to_string(at) + ".osb"),
                  "<subsystem format=\"1\" id=\"" + id(at) + "\">\n  <name>" + letter + std::to_string(at) +
                      "</name>\n" + (at < length ? entry(at + 1) : "") + "</subsystem>\n");
        }
        edit(unitFile("Pump.ory"), "</project>", entry(1) + "</project>");
    };
    chain('A', 150);
    chain('B', 51);
    reopen();
    ASSERT_TRUE(result) << result.problems.front().message();
    EXPECT_THAT(refusal("B1", "A150"), HasSubstr("nested more than 200 levels deep"));
    EXPECT_EQ(refusal("B2", "A150"), "");
    EXPECT_EQ(refusal("B1", "A149"), "");
}

} // namespace
