#include "tests/orchard/storage/Workbench.h"

#include "CM/host/LoadOnDemandManager.h"
#include "CM/host/OrId.h"
#include "CM/host/Reload.h"
#include "CM/host/Utilities.h"

#include <sys/stat.h>

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr const char *newAttribute =
    "<attribute id=\"00000000-0000-0000-0000-0000000000aa\"><name>new</name></attribute></class>";

class ReloadUnit : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    static IUnit *reload(IUnit *unit) {
        return QuickATMFacade(nullptr, nullptr, nullptr, nullptr).reloadUnit(unit, 0, 0);
    }
};

TEST_F(ReloadUnit, TakesNewFactsOverIntoTheSameObject) {
    IUnit *const valve = unit("Valve");
    edit(unitFile("Valve.ocl"), "A motor valve.", "A hand valve.");
    edit(unitFile("Valve.ocl"), "<class ", "<!--\n$Id: 1.2 $\n-->\n<class ");
    ::chmod(unitFile("Valve.ocl").c_str(), 0444);
    valve->setCMState(3);
    EXPECT_EQ(reload(valve), valve);
    EXPECT_EQ(orchard::descriptionOf(*valve), "A hand valve.");
    EXPECT_EQ(valve->getCMHeader(), "$Id: 1.2 $");
    EXPECT_TRUE(valve->isReadOnly());
    EXPECT_EQ(valve->getCMState(), 3);
    EXPECT_FALSE(valve->isModified());
}

TEST_F(ReloadUnit, ANewStructureGivesANewObjectInTheSamePlace) {
    IUnit *const valve = unit("Valve");
    valve->setCMState(5);
    edit(unitFile("Valve.ocl"), "</class>", newAttribute);
    IUnit *const fresh = reload(valve);
    ASSERT_NE(fresh, nullptr);
    EXPECT_NE(fresh, valve);
    EXPECT_EQ(fresh->getCMState(), 5);
    EXPECT_EQ(orchard::elementsInside(*unit("Drives"))[1], fresh);
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), fresh);
    EXPECT_EQ(orchard::elementsInside(*fresh).size(), 4U);
}

TEST_F(ReloadUnit, AUnitThatComesBackWithAnotherIdentifierKeepsItsState) {
    IUnit *const valve = unit("Valve");
    valve->setCMState(5);
    edit(unitFile("Valve.ocl"), valve->getOrId().getOrIdStr().str(), "00000000-0000-0000-0000-0000000000bb");
    IUnit *const fresh = reload(valve);
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->getOrId().getOrIdStr(), "00000000-0000-0000-0000-0000000000bb");
    EXPECT_EQ(fresh->getCMState(), 5);
}

TEST_F(ReloadUnit, ANewStructureOfASubsystemReplacesTheUnitsInIt) {
    IHandle *const handle = unit("Valve")->getHandle();
    IUnit *const valve = unit("Valve");
    IUnit *const panel = unit("Panel");
    std::string text = read(unitFile("Drives.osb"));
    const std::size_t line = text.rfind("  <unit", text.find("Sensors.osb"));
    text.erase(line, text.find('\n', line) + 1 - line);
    write(unitFile("Drives.osb"), text);
    ASSERT_NE(reload(unit("Drives")), nullptr);
    EXPECT_NE(unit("Valve"), valve);
    EXPECT_EQ(handle->doGetObject(), unit("Valve"));
    EXPECT_EQ(unit("Panel"), panel);
    EXPECT_EQ(IUnit::getByFile("FlowSensor.ocl"), nullptr);
    handle->release();
}

TEST_F(ReloadUnit, UnsavedChangesBelowMoveOver) {
    IUnit *const level = unit("LevelSensor");
    orchard::setDescription(*level, "not saved");
    edit(unitFile("Drives.osb"), "</subsystem>",
         "<class id=\"00000000-0000-0000-0000-0000000000aa\"><name>Extra</name></class></subsystem>");
    ASSERT_NE(reload(unit("Drives")), nullptr);
    EXPECT_EQ(unit("Drives/Sensors/LevelSensor"), level);
    EXPECT_EQ(orchard::descriptionOf(*level), "not saved");
    EXPECT_EQ(level->getOwner(), unit("Sensors"));
}

TEST_F(ReloadUnit, TheFactsOfUnitsInTheSameFileComeToo) {
    IUnit *const entry = unit("AlarmEntry");
    edit(unitFile("Control/AlarmList.ocl"), "<name>AlarmEntry</name>",
         "<name>AlarmEntry</name><scc-project>new</scc-project><batch-archive>/new</batch-archive>");
    ASSERT_NE(reload(unit("AlarmList")), nullptr);
    EXPECT_EQ(unit("AlarmEntry"), entry);
    CString text;
    CString aux;
    EXPECT_EQ(entry->getBatchArchiveRecursive(text), 1);
    EXPECT_EQ(text, "/new");
    EXPECT_EQ(entry->getSccArchiveRecursive(text, aux), 1);
    EXPECT_EQ(text, "new");
}

TEST_F(ReloadUnit, AUnitBelowWhoseFileIsGoneStaysAsItWas) {
    IUnit *const level = unit("LevelSensor");
    std::filesystem::remove(unitFile("LevelSensor.ocl"));
    edit(unitFile("Drives.osb"), "</subsystem>",
         "<class id=\"00000000-0000-0000-0000-0000000000aa\"><name>Extra</name></class></subsystem>");
    ASSERT_NE(reload(unit("Drives")), nullptr);
    EXPECT_EQ(unit("LevelSensor"), level);
    EXPECT_FALSE(level->isStub());
    EXPECT_EQ(orchard::elementsInside(*level).size(), 3U);
    EXPECT_THAT(messages, ElementsAre(AllOf(HasSubstr("/LevelSensor.ocl"), HasSubstr("is missing"),
                                            HasSubstr("stays in the model"))));
}

TEST_F(ReloadUnit, WarningsThatTheUserHasAgreedToGoToTheLogOnly) {
    std::filesystem::remove(unitFile("LevelSensor.ocl"));
    edit(unitFile("Drives.osb"), "</subsystem>",
         "<class id=\"00000000-0000-0000-0000-0000000000aa\"><name>Extra</name></class></subsystem>");
    isOk2All = true;
    IUnit *const fresh = reload(unit("Drives"));
    write(unitFile("Valve.ocl"), "broken");
    IUnit *const broken = reload(unit("Valve"));
    isOk2All = false;
    EXPECT_NE(fresh, nullptr);
    EXPECT_EQ(broken, nullptr);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("/Valve.ocl"))) << "a failure is no warning";
}

TEST_F(ReloadUnit, AKeptUnitTakesItsNewPlace) {
    IUnit *const valve = unit("Valve");
    orchard::setDescription(*valve, "not saved");
    edit(unitFile("Drives.osb"), "file=\"Valve.ocl\"", "file=\"../far/Valve.ocl\" external=\"yes\"");
    ASSERT_NE(reload(unit("Drives")), nullptr);
    EXPECT_EQ(unit("Valve"), valve);
    EXPECT_EQ(valve->getFullFileName(), path("far/Valve.ocl").c_str());
    EXPECT_TRUE(element(valve).is(orchard::UnitElement::external));
    EXPECT_EQ(IUnit::getByFile(path("far/Valve.ocl")), valve);
}

TEST_F(ReloadUnit, TheStateOfEmbeddedFilesAndInnerUnitsStays) {
    unit("wiring.txt")->setCMState(4);
    unit("AlarmEntry")->setCMState(6);
    edit(unitFile("Pump.ory"), "</project>",
         "<class id=\"00000000-0000-0000-0000-0000000000aa\"><name>Extra</name></class></project>");
    ASSERT_NE(reload(project), nullptr);
    EXPECT_EQ(unit("wiring.txt")->getCMState(), 4);
    EXPECT_EQ(unit("AlarmEntry")->getCMState(), 6);
}

TEST_F(ReloadUnit, AReloadedUnitCanBeSaved) {
    edit(unitFile("Valve.ocl"), "A motor valve.", "A hand valve.");
    ASSERT_NE(reload(unit("Valve")), nullptr);
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveAlways), 1);
    edit(unitFile("Pump.ory"), "</project>",
         "<class id=\"00000000-0000-0000-0000-0000000000aa\"><name>Extra</name></class></project>");
    ASSERT_NE(reload(project), nullptr);
    EXPECT_EQ(project->orySave2File(orySaveAlways), 1);
    EXPECT_TRUE(messages.empty());
}

TEST_F(ReloadUnit, TheProjectKeepsItsObject) {
    edit(unitFile("Pump.ory"), "</project>",
         "<class id=\"00000000-0000-0000-0000-0000000000aa\"><name>Extra</name></class></project>");
    edit(unitFile("Pump.ory"), "<project ", "<!--\n$Id: 1.5 $\n-->\n<project ");
    ::chmod(unitFile("Pump.ory").c_str(), 0444);
    EXPECT_EQ(reload(project), project);
    EXPECT_EQ(orchard::elementsInside(*project).size(), 6U);
    EXPECT_EQ(project->getCMHeader(), "$Id: 1.5 $");
    EXPECT_TRUE(project->isReadOnly());
    EXPECT_EQ(CurrentWorkspace::GetActiveProject(), project);
}

TEST_F(ReloadUnit, ABrokenFileLeavesTheUnitAndIsToldOnce) {
    IUnit *const valve = unit("Valve");
    edit(unitFile("Valve.ocl"), "<name>Valve</name>", "<name>Val");
    EXPECT_EQ(reload(valve), nullptr);
    EXPECT_THAT(messages, ElementsAre(AllOf(HasSubstr("/Valve.ocl:"), HasSubstr("well-formed"))));
    EXPECT_EQ(unit("Valve"), valve);
    EXPECT_EQ(orchard::elementsInside(*valve).size(), 3U);
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), valve);
}

TEST_F(ReloadUnit, ABrokenFileBelowLeavesAllOfIt) {
    IUnit *const drives = unit("Drives");
    edit(unitFile("Drives.osb"), "</subsystem>",
         "<class id=\"00000000-0000-0000-0000-0000000000aa\"><name>Extra</name></class></subsystem>");
    write(unitFile("LevelSensor.ocl"), "<class");
    EXPECT_EQ(reload(drives), nullptr);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("/LevelSensor.ocl:1:")));
    EXPECT_EQ(unit("Drives"), drives);
    EXPECT_EQ(orchard::elementsInside(*drives).size(), 3U);
}

TEST_F(ReloadUnit, AMissingFileLeavesTheUnit) {
    std::filesystem::remove(unitFile("Valve.ocl"));
    EXPECT_EQ(reload(unit("Valve")), nullptr);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("/Valve.ocl: the file is missing")));
    EXPECT_FALSE(unit("Valve")->isStub());
}

TEST_F(ReloadUnit, AnIdentifierFromElsewhereIsRefused) {
    const std::string id = unit("Panel")->getOrId().getOrIdStr().str();
    edit(unitFile("Valve.ocl"), "</class>", "<attribute id=\"" + id + "\"><name>x</name></attribute></class>");
    EXPECT_EQ(reload(unit("Valve")), nullptr);
    EXPECT_THAT(messages, ElementsAre(AllOf(HasSubstr(id), HasSubstr("'Panel'"))));
}

TEST_F(ReloadUnit, IsPossibleForLoadedUnitsWithAFileOfTheirOwn) {
    EXPECT_TRUE(QuickATMFacade::CanReloadUnit(unit("Valve"), 0));
    EXPECT_TRUE(QuickATMFacade::CanReloadUnit(unit("Valve"), 1));
    EXPECT_FALSE(QuickATMFacade::CanReloadUnit(nullptr, 0));
    EXPECT_FALSE(QuickATMFacade::CanReloadUnit(unit("wiring.txt"), 0));
    EXPECT_FALSE(QuickATMFacade::CanReloadUnit(unit("AlarmEntry"), 0));
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Valve"), false).empty());
    EXPECT_FALSE(QuickATMFacade::CanReloadUnit(unit("Valve"), 0));
}

TEST_F(ReloadUnit, OfWhatIsNotReadInPlaceGivesNothing) {
    EXPECT_EQ(reload(nullptr), nullptr);
    EXPECT_EQ(reload(unit("wiring.txt")), nullptr);
    EXPECT_EQ(reload(unit("AlarmEntry")), nullptr);
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Valve"), false).empty());
    EXPECT_EQ(reload(unit("Valve")), nullptr);
    EXPECT_TRUE(unit("Valve")->isStub());
    EXPECT_TRUE(messages.empty());
}

TEST_F(ReloadUnit, CallsBothCallbacksOfAScope) {
    int calls = 0;
    const auto count = [](void *counter) { ++*static_cast<int *>(counter); };
    {
        const QuickATMFacade scope(count, &calls, count, &calls);
        EXPECT_EQ(calls, 1);
    }
    EXPECT_EQ(calls, 2);
}

TEST_F(ReloadUnit, StubsAreCompletedOnDemand) {
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Drives"), false).empty());
    EXPECT_EQ(LoadOnDemandManager::instance()->completeLoadScopeWithDialog(project, "loading", 0), 1);
    EXPECT_FALSE(unit("Drives/Sensors/FlowSensor")->isStub());
}

} // namespace
