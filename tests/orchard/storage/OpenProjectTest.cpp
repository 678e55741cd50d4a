#include "tests/orchard/storage/Workbench.h"

#include "orchard/properties/PropertyTable.h"
#include "orchard/storage/UnitSearch.h"

#include <sys/stat.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class OpenProject : public Workbench {};

TEST_F(OpenProject, ReadsTheWholeModel) {
    openSample();
    ASSERT_NE(project, nullptr);
    EXPECT_EQ(project->getName(), "Pump");
    EXPECT_EQ(orchard::workspaceUnits(*project).size(), 17U);
    EXPECT_EQ(project->getOwnDirectory(), path("Pump_ory"));
    EXPECT_EQ(project->getProjectFileDirectory(), directory);
    EXPECT_EQ(unit("Control")->getOwnDirectory(), path("Pump_ory/Control"));
    EXPECT_EQ(unit("Control")->getPersistAs(), "Control");
    EXPECT_EQ(unit("AlarmList")->getFullFileName(), path("Pump_ory/Control/AlarmList.ocl"));
    EXPECT_EQ(unit("Sensors/LevelSensor")->getOwnDirectory(), path("Pump_ory"));
    EXPECT_EQ(project->getConfiguration()->getName(), "Debug");
    EXPECT_TRUE(warnings.empty());
}

TEST_F(OpenProject, TakesADirectoryWithOneProject) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    open("");
    EXPECT_NE(project, nullptr);
    ASSERT_TRUE(orchard::createSampleProject(path("Other")));
    open("");
    EXPECT_THAT(problem(), HasSubstr("holds 2 project files"));
}

TEST_F(OpenProject, AProjectThatIsOpenIsGivenBack) {
    openSample();
    IProject *const first = project;
    open();
    EXPECT_EQ(project, first);
    EXPECT_EQ(orchard::openProjects().size(), 1U);
}

TEST_F(OpenProject, AMissingUnitFileMakesAStubWithAWarning) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    std::filesystem::remove(unitFile("Valve.ocl"));
    open();
    ASSERT_NE(project, nullptr);
    ASSERT_THAT(warnings, ElementsAre(HasSubstr("/Valve.ocl: the file of the class 'Valve' is missing")));
    EXPECT_TRUE(unit("Valve")->isStub());
    EXPECT_STREQ(orchard::unitStateText(orchard::unitState(*unit("Valve"))), "U");
}

TEST_F(OpenProject, AMissingSubsystemHidesWhatIsBelow) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    std::filesystem::remove(unitFile("Drives.osb"));
    open();
    EXPECT_TRUE(unit("Drives")->isStub());
    EXPECT_FALSE(orchard::findUnit(*project, "Valve"));
}

TEST_F(OpenProject, PermissionBitsMakeAUnitReadOnly) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    ::chmod(unitFile("Valve.ocl").c_str(), 0444);
    open();
    EXPECT_TRUE(unit("Valve")->isReadOnly());
    EXPECT_EQ(orchard::unitState(*unit("Valve")), orchard::UnitState::readOnly);
    ::chmod(unitFile("Valve.ocl").c_str(), 0644);
    unit("Valve")->updateMode("");
    EXPECT_FALSE(unit("Valve")->isReadOnly());
}

TEST_F(OpenProject, ReferencesAreReadOnlyWithAllBelow) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    ASSERT_TRUE(orchard::createSampleProject(path("Other")));
    const std::string drives = read(path("Other_ory/Drives.osb"));
    const std::string id = drives.substr(drives.find("id=\"") + 4, 36);
    edit(unitFile("Pump.ory"), "</project>",
         "<unit kind=\"subsystem\" id=\"" + id +
             "\" file=\"..\\Other_ory\\Drives.osb\" reference=\"yes\"/></project>");
    open();
    ASSERT_NE(project, nullptr) << problem();
    IUnit *const valve = IUnit::getByFile(path("Other_ory/Valve.ocl"));
    ASSERT_NE(valve, nullptr);
    EXPECT_TRUE(valve->isReference());
    EXPECT_TRUE(valve->isReadOnly());
    EXPECT_FALSE(IUnit::getByFile(unitFile("Valve.ocl"))->isReference());
}

TEST_F(OpenProject, ExternalUnitsStandWhereTheyLike) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    std::filesystem::create_directory(path("shared"));
    std::filesystem::rename(unitFile("Valve.ocl"), path("shared/Valve.ocl"));
    edit(unitFile("Drives.osb"), "file=\"Valve.ocl\"", "file=\"../shared/Valve.ocl\" external=\"yes\"");
    open();
    ASSERT_NE(project, nullptr) << problem();
    EXPECT_EQ(unit("Valve")->getFullFileName(), path("shared/Valve.ocl"));
    EXPECT_TRUE(unit("Valve")->isExternalUnitRecursive());
    EXPECT_FALSE(unit("Drives")->isExternalUnitRecursive());
}

TEST_F(OpenProject, StubsByChoiceAreKeptInTheProjectFile) {
    openSample();
    EXPECT_TRUE(orchard::setUnitLoaded(*unit("Drives"), false).empty());
    EXPECT_TRUE(unit("Drives")->isStub());
    EXPECT_TRUE(orchard::saveProject(project).empty());
    EXPECT_THAT(read(path("Pump.orp")), HasSubstr("\nstub "));
    reopen();
    ASSERT_TRUE(unit("Drives")->isStub());
    EXPECT_TRUE(warnings.empty());
    EXPECT_TRUE(orchard::setUnitLoaded(*unit("Drives"), true).empty());
    EXPECT_FALSE(unit("Drives/Valve")->isStub());
}

TEST_F(OpenProject, StatesUnderConfigurationManagementAreKeptInTheProjectFile) {
    openSample();
    unit("Valve")->setCMState(4099);
    unit("Drives")->setCMState(-1);
    EXPECT_TRUE(orchard::saveProject(project).empty());
    const std::string text = read(path("Pump.orp"));
    EXPECT_THAT(text, HasSubstr("\nstate " + element(unit("Valve")).id().text() + " 4099\n"));
    reopen();
    EXPECT_EQ(unit("Valve")->getCMState(), 4099);
    EXPECT_EQ(unit("Drives")->getCMState(), -1);
    EXPECT_EQ(unit("AlarmList")->getCMState(), 0);
    unit("Valve")->setCMState(0);
    unit("Drives")->setCMState(0);
    EXPECT_TRUE(orchard::saveProject(project).empty());
    EXPECT_THAT(read(path("Pump.orp")), testing::Not(HasSubstr("\nstate ")));
}

TEST_F(OpenProject, AUnitWithUnsavedChangesIsNotUnloaded) {
    openSample();
    orchard::setDescription(*unit("Valve"), "changed");
    const orchard::Problems problems = orchard::setUnitLoaded(*unit("Drives"), false);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_THAT(problems[0].text, HasSubstr("'Valve' holds changes that were not saved"));
    EXPECT_FALSE(unit("Drives")->isStub());
}

TEST_F(OpenProject, CancellingLeavesNothingOpen) {
    ASSERT_TRUE(orchard::createGeneratedProject(path("Big"), 600));
    std::size_t told = 0;
    orchard::OpenOptions options;
    options.progress = [&](std::size_t done, std::size_t known) {
        EXPECT_LE(done, known);
        told = done;
    };
    options.cancelled = [&] { return told >= 256; };
    const orchard::OpenResult opened = orchard::openProject(path("Big.orp"), options);
    EXPECT_TRUE(opened.cancelled);
    EXPECT_EQ(opened.project, nullptr);
    EXPECT_EQ(told, 256U);
    EXPECT_TRUE(orchard::openProjects().empty());
}

TEST_F(OpenProject, ClosingTheActiveOneActivatesTheOneBefore) {
    openSample();
    IProject *const first = project;
    ASSERT_TRUE(orchard::createSampleProject(path("Other")));
    open("Other.orp");
    EXPECT_EQ(CurrentWorkspace::GetActiveProject(), project);
    orchard::closeProject(project);
    EXPECT_EQ(CurrentWorkspace::GetActiveProject(), first);
    orchard::closeProject(first);
    EXPECT_EQ(CurrentWorkspace::GetActiveProject(), nullptr);
    EXPECT_EQ(CurrentProject::Project(), nullptr);
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), nullptr);
    EXPECT_TRUE(IUnit::getRepositoryFiles()->IsEmpty());
}

} // namespace
