#include "tests/orchard/storage/Workbench.h"

#include "orchard/change/UnitChange.h"
#include "orchard/storage/UnitSearch.h"

#include <sys/stat.h>

using orchard::FilesBy;
using orchard::UnitChange;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class RemoveUnit : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    [[nodiscard]] static bool exists(const std::string &file) { return std::filesystem::exists(file); }
    void expectSaved() {
        const auto before = orchard::workspaceUnits(*project).size();
        reopen();
        ASSERT_TRUE(result) << result.problems.front().message();
        EXPECT_THAT(warnings, IsEmpty());
        EXPECT_EQ(orchard::workspaceUnits(*project).size(), before);
    }
};

TEST_F(RemoveUnit, TakesItsFileAndItsNameInTheOwnersFile) {
    IHandle *const handle = unit("Valve")->getHandle();
    UnitChange change = UnitChange::remove({unit("Valve")});
    ASSERT_TRUE(change);
    EXPECT_EQ(change.oldPath(), unitFile("Valve.ocl"));
    change.begin();
    EXPECT_EQ(handle->doGetObject(), unit("Valve")) << "a tool is told of it yet";
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_TRUE(change.stands());
    EXPECT_THAT(change.units(), IsEmpty()) << "it is gone";
    EXPECT_EQ(change.files().at(0).unit, nullptr);
    EXPECT_EQ(handle->doGetObject(), nullptr);
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty()) << "it is over";
    handle->release();
    EXPECT_FALSE(exists(unitFile("Valve.ocl")));
    EXPECT_THAT(read(unitFile("Drives.osb")), testing::Not(HasSubstr("Valve.ocl")));
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), nullptr);
    expectSaved();
}

TEST_F(RemoveUnit, WithAllBelowButNotWhatTheModelDoesNotKnow) {
    write(unitFile("Control/RCS/AlarmList.ocl,v"), "archive");
    UnitChange change = UnitChange::remove({unit("Control"), unit("AlarmList"), unit("Drives")});
    ASSERT_EQ(change.files().size(), 1U + 6U) << "what lies in Control's directory is not listed beside it";
    ASSERT_EQ(change.files().front().from, unitFile("Control"));
    EXPECT_TRUE(change.files().front().isDirectory);
    EXPECT_EQ(change.units().size(), 4U + 6U);
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_FALSE(exists(unitFile("Control/AlarmList.ocl")));
    EXPECT_EQ(read(unitFile("Control/RCS/AlarmList.ocl,v")), "archive");
    EXPECT_FALSE(exists(unitFile("FlowSensor.ocl")));
    expectSaved();
}

TEST_F(RemoveUnit, AnEmptyDirectoryGoes) {
    EXPECT_THAT(UnitChange::remove({unit("Control")}).finish(FilesBy::host), IsEmpty());
    EXPECT_FALSE(exists(unitFile("Control")));
}

TEST_F(RemoveUnit, FromADirectoryThatOthersUseGoesFileByFile) {
    unit("Operator")->setMYpersAs("Control");
    std::filesystem::rename(unitFile("Operator.osb"), unitFile("Control/Operator.osb"));
    std::filesystem::rename(unitFile("Panel.ocl"), unitFile("Control/Panel.ocl"));
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    UnitChange change = UnitChange::remove({unit("Control")});
    ASSERT_EQ(change.files().size(), 4U);
    EXPECT_FALSE(change.files()[0].isDirectory);
    ASSERT_NE(change.files()[0].sharedWith, nullptr);
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_TRUE(exists(unitFile("Control/Operator.osb")));
    EXPECT_TRUE(exists(unitFile("Control/Panel.ocl")));
    EXPECT_FALSE(exists(unitFile("Control/AlarmList.ocl")));
    expectSaved();
}

TEST_F(RemoveUnit, AcceptsThatTheToolHasRemovedTheFile) {
    UnitChange change = UnitChange::remove({unit("Valve")});
    std::filesystem::remove(unitFile("Valve.ocl"));
    EXPECT_THAT(change.finish(FilesBy::tool), IsEmpty());
    EXPECT_TRUE(change.stands());
    expectSaved();
}

TEST_F(RemoveUnit, AUnitThatTheToolHasNotRemovedStays) {
    UnitChange change = UnitChange::remove({unit("Valve"), unit("Pump.ocl")});
    std::filesystem::remove(unitFile("Pump.ocl"));
    const auto told = change.finish(FilesBy::tool);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), HasSubstr("Valve.ocl: the CM tool has not removed the file"));
    EXPECT_FALSE(change.stands());
    EXPECT_NE(IUnit::getByFile("Valve.ocl"), nullptr);
    EXPECT_EQ(IUnit::getByFile("Pump.ocl"), nullptr);
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
    expectSaved();
}

TEST_F(RemoveUnit, WhatTheToolHasLeftOfASubsystemGoes) {
    UnitChange change = UnitChange::remove({unit("Drives")});
    std::filesystem::remove(unitFile("Drives.osb"));
    const auto told = change.finish(FilesBy::tool);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), HasSubstr("the CM tool has left the file behind"));
    EXPECT_TRUE(change.stands());
    EXPECT_FALSE(exists(unitFile("FlowSensor.ocl")));
    expectSaved();
}

TEST_F(RemoveUnit, ReferencedAndExternalFilesStay) {
    write(path("lib/Gear.ocl"),
          "<class format=\"1\" id=\"00000000-0000-0000-0000-0000000000aa\">\n  <name>Gear</name>\n</class>\n");
    edit(unitFile("Drives.osb"), "</subsystem>",
         "<unit kind=\"class\" id=\"00000000-0000-0000-0000-0000000000aa\" file=\"../lib/Gear.ocl\" "
         "reference=\"yes\"/>\n</subsystem>");
    reopen();
    EXPECT_THAT(UnitChange::remove({unit("Drives")}).finish(FilesBy::host), IsEmpty());
    EXPECT_TRUE(exists(path("lib/Gear.ocl")));
    expectSaved();
}

TEST_F(RemoveUnit, IsRefusedWhereWorkWouldBeLost) {
    edit(unitFile("FlowSensor.ocl"), "Flow in", "Somebody's flow in");
    EXPECT_THAT(UnitChange::remove({unit("Drives")}).problems().at(0).text,
                HasSubstr("changed by another program"));
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Control"), false).empty());
    EXPECT_THAT(UnitChange::remove({unit("Control")}).problems().at(0).text, HasSubstr("isn't loaded"));
    EXPECT_THAT(UnitChange::remove({project}).problems().at(0).text, HasSubstr("it is the project itself"));
    EXPECT_FALSE(UnitChange::remove({}));
    ::chmod(unitFile("Pump.ory").c_str(), 0444);
    EXPECT_THAT(UnitChange::remove({unit("Operator")}).problems().at(0).text,
                HasSubstr("Pump.ory, which lists the unit"));
}

TEST_F(RemoveUnit, WhereTheOwnersFileCanNotBeSavedAllIsAsBefore) {
    UnitChange change = UnitChange::remove({unit("Valve")});
    ::chmod(unitFile("Drives.osb").c_str(), 0444);
    EXPECT_EQ(change.finish(FilesBy::host).size(), 1U);
    EXPECT_FALSE(change.stands());
    EXPECT_EQ(orchard::elementsInside(*unit("Drives"))[1], unit("Valve"));
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), unit("Valve"));
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
    EXPECT_FALSE(unit("Drives")->isModified());
}

TEST_F(RemoveUnit, TheActiveComponentIsForgottenWithIt) {
    ASSERT_NE(project->getComponent(), nullptr);
    EXPECT_THAT(UnitChange::remove({unit("Valve")}).finish(FilesBy::host), IsEmpty());
    EXPECT_FALSE(model->activeComponent.empty());
    EXPECT_FALSE(model->activeConfiguration.empty());
    EXPECT_THAT(UnitChange::remove({unit("Controller")}).finish(FilesBy::host), IsEmpty());
    EXPECT_EQ(project->getComponent(), nullptr);
    EXPECT_TRUE(model->activeComponent.empty());
    EXPECT_TRUE(model->activeConfiguration.empty());
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    expectSaved();
}

TEST_F(RemoveUnit, ACancelledOneRemovesNothing) {
    UnitChange change = UnitChange::remove({unit("Valve")});
    change.cancel();
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_FALSE(change.stands());
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), unit("Valve"));
}

TEST_F(RemoveUnit, ARefusedOneRemovesNothing) {
    ::chmod(unitFile("Drives.osb").c_str(), 0444);
    UnitChange change = UnitChange::remove({unit("Valve"), unit("Pump.ocl")});
    EXPECT_EQ(change.problems().size(), 1U) << "one owner is told of once";
    EXPECT_THAT(change.finish(FilesBy::host), IsEmpty());
    EXPECT_FALSE(change.stands());
    EXPECT_TRUE(exists(unitFile("Valve.ocl")));
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), unit("Valve"));
}

TEST_F(RemoveUnit, WhereASecondOwnersFileCanNotBeSavedTheFirstGetsItsTextBack) {
    const std::string sensors = read(unitFile("Sensors.osb"));
    UnitChange change = UnitChange::remove({unit("FlowSensor"), unit("Valve")});
    ::chmod(unitFile("Drives.osb").c_str(), 0444);
    const auto told = change.finish(FilesBy::host);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), testing::AllOf(HasSubstr("Drives.osb"), HasSubstr("read-only")));
    EXPECT_FALSE(change.stands());
    EXPECT_FALSE(change.isOpen());
    EXPECT_EQ(read(unitFile("Sensors.osb")), sensors);
    EXPECT_NE(IUnit::getByFile("Valve.ocl"), nullptr);
    EXPECT_TRUE(exists(unitFile("FlowSensor.ocl")));
    expectSaved();
}

TEST_F(RemoveUnit, AFileThatCanNotBeRemovedTakesItBack) {
    UnitChange change = UnitChange::remove({unit("Valve")});
    std::filesystem::remove(unitFile("Valve.ocl"));
    std::filesystem::create_directory(unitFile("Valve.ocl"));
    const auto told = change.finish(FilesBy::host);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0].message(), HasSubstr("Valve.ocl: the file can't be removed"));
    EXPECT_FALSE(change.stands());
    EXPECT_FALSE(change.isOpen());
    EXPECT_NE(IUnit::getByFile("Valve.ocl"), nullptr);
    EXPECT_THAT(read(unitFile("Drives.osb")), HasSubstr("Valve.ocl"));
}

TEST_F(RemoveUnit, TheActiveConfigurationStaysIfItsComponentCanNotBeRead) {
    const std::string text = read(path("Pump.orp"));
    ASSERT_THAT(text, HasSubstr("configuration "));
    write(unitFile("Controller.ocm"), "not a unit");
    reopen();
    EXPECT_THAT(UnitChange::remove({unit("Valve")}).finish(FilesBy::host), IsEmpty());
    ASSERT_THAT(orchard::saveProject(project), IsEmpty());
    EXPECT_EQ(read(path("Pump.orp")), text);
}

} // namespace
