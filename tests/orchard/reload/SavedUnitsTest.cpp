#include "tests/orchard/storage/Workbench.h"

#include "CM/host/Reload.h"
#include "orchard/storage/UnitSearch.h"

namespace {

class SavedUnits : public Workbench {};

TEST_F(SavedUnits, AreReadAnewInTheOtherProjectsThatReferToThem) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    ASSERT_TRUE(orchard::createSampleProject(path("Other")));
    const std::string drives = read(unitFile("Drives.osb"));
    const std::size_t id = drives.rfind("id=\"", drives.find("Valve.ocl"));
    edit(path("Other_ory/Other.ory"), "</project>",
         "<unit kind=\"class\" " + drives.substr(id, 41) +
             " file=\"../Pump_ory/Valve.ocl\" reference=\"yes\"/></project>");
    open("Other.orp");
    ASSERT_NE(project, nullptr) << problem();
    IProject *const other = project;
    open();
    const IUnit *const theirs = orchard::findUnit(*other, "Valve.ocl").unit;
    ASSERT_NE(theirs, nullptr);

    edit(unitFile("Valve.ocl"), "A motor valve.", "Another valve.");
    QuickATMFacade scope(nullptr, nullptr, nullptr, nullptr);
    IUnit *const ours = scope.reloadUnit(unit("Valve.ocl"), 0, 0);
    CurrentWorkspace::Workspace()->getWorkspace()->AddToSavedUnitsList(ours);
    const orchard::UnitSearch search = orchard::findUnit(*other, unitFile("Valve.ocl"));
    EXPECT_EQ(orchard::descriptionOf(*search.unit), "A motor valve.");
    CurrentWorkspace::ApplySavedUnitsListToNonActiveProjects();
    EXPECT_EQ(orchard::descriptionOf(*orchard::findUnit(*other, unitFile("Valve.ocl")).unit), "Another valve.");
    EXPECT_EQ(orchard::Workspace::instance().savedUnitCount(), 0U);
    EXPECT_TRUE(messages.empty());

    IUnit *const changed = orchard::findUnit(*other, unitFile("Valve.ocl")).unit;
    orchard::setDescription(*changed, "Not saved.");
    CurrentWorkspace::Workspace()->getWorkspace()->AddToSavedUnitsList(ours);
    CurrentWorkspace::ApplySavedUnitsListToNonActiveProjects();
    EXPECT_EQ(orchard::descriptionOf(*changed), "Not saved.");
    EXPECT_THAT(messages, testing::ElementsAre(testing::HasSubstr("has unsaved changes")));
}

TEST_F(SavedUnits, OfAClosedProjectAreForgotten) {
    openSample();
    CurrentWorkspace::Workspace()->getWorkspace()->AddToSavedUnitsList(unit("Valve"));
    CurrentWorkspace::Workspace()->getWorkspace()->AddToSavedUnitsList(nullptr);
    EXPECT_EQ(orchard::Workspace::instance().savedUnitCount(), 1U);
    orchard::closeAllProjects();
    EXPECT_EQ(orchard::Workspace::instance().savedUnitCount(), 0U);
}

} // namespace
