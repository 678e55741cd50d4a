#include "CM/CMSupport/core/InformationFiles.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

namespace {

/// A component that keeps code respect information, and a class that is visible from one of its code files.
class InformationFilesRule : public CoreFixture {
  protected:
    InformationFilesRule() {
        component = project().component;
        configuration = dynamic_cast<recording::Configuration *>(component->DoGetActiveConfig());
        configuration->respectMode = true;
    }
    /// A code file that is a separate unit.
    recording::File &addCodeFile(const CString &name, IDObject *observed = nullptr) {
        auto &file = host.addFile(name, component);
        if (observed != nullptr) {
            file.observed.push_back(observed);
        }
        return file;
    }
    static bool holds(IUnit &unit) { return shouldSetInformationFilesCheckBox(&unit); }

    IComponent *component = nullptr;
    recording::Configuration *configuration = nullptr;
};

TEST_F(InformationFilesRule, HoldsForAUnitThatAFileOfAnotherSaveUnitObserves) {
    auto &pump = host.addUnit("Pump");
    EXPECT_FALSE(holds(pump));
    addCodeFile("Pump", &pump);
    EXPECT_TRUE(holds(pump));
}

TEST_F(InformationFilesRule, IsOffForNullAndWithoutAProjectOrAComponentOrAConfiguration) {
    auto &pump = host.addUnit("Pump");
    addCodeFile("Pump", &pump);
    EXPECT_FALSE(shouldSetInformationFilesCheckBox(nullptr));
    auto &main = dynamic_cast<recording::Component &>(*component);
    main.activeConfig = nullptr;
    EXPECT_FALSE(holds(pump));
    main.activeConfig = configuration;
    project().component = nullptr;
    EXPECT_FALSE(holds(pump));
    project().component = component;
    EXPECT_TRUE(holds(pump));
    host.model.activeProject = nullptr;
    EXPECT_FALSE(holds(pump));
}

TEST_F(InformationFilesRule, IsOffWithoutRespectModeAndWithThePropertyFalse) {
    auto &pump = host.addUnit("Pump");
    addCodeFile("Pump", &pump);
    setGeneral("EnableRespectSynchronizedCM", "False");
    EXPECT_FALSE(holds(pump));
    setGeneral("EnableRespectSynchronizedCM", "True");
    EXPECT_TRUE(holds(pump));
    configuration->respectMode = false;
    EXPECT_FALSE(holds(pump));
}

TEST_F(InformationFilesRule, AFileInTheUnitsOwnSaveUnitDoesNotCount) {
    auto &pump = host.addUnit("Pump");
    auto &file = addCodeFile("Pump", &pump);
    file.saveUnit = false;
    file.owner = &pump;
    EXPECT_FALSE(isFileNotSAMappedToUnit(&pump, component));
}

TEST_F(InformationFilesRule, AFileWithoutASaveUnitDoesNotCount) {
    auto &pump = host.addUnit("Pump");
    auto &file = addCodeFile("Pump", &pump);
    file.saveUnit = false;
    file.owner = nullptr;
    EXPECT_FALSE(isFileNotSAMappedToUnit(&pump, component));
}

TEST_F(InformationFilesRule, AClassesOwnFileOutsideTheComponentDoesNotCount) {
    auto &pump = host.addUnit("Pump");
    auto &file = host.addFile("Pump", &pump); // a separate save unit, but the class's
    file.observed.push_back(&pump);
    EXPECT_FALSE(isFileNotSAMappedToUnit(&pump, component));
    auto &valve = host.addUnit("Valve");
    file.observed.push_back(&valve);
    EXPECT_TRUE(isFileNotSAMappedToUnit(&valve, component)) << "it is another class's";
}

TEST_F(InformationFilesRule, ASubsystemHoldsIfAFileOfItsNameShowsItsElements) {
    auto &cooling = host.addSubsystem("Cooling");
    auto &element = host.addElement("Sensor", &cooling);
    auto &other = addCodeFile("Other");
    host.addFragment("part", &other, &element);
    EXPECT_FALSE(holds(cooling)) << "the file bears another name";
    auto &file = addCodeFile("Cooling");
    EXPECT_FALSE(holds(cooling)) << "the file shows nothing";
    auto &outer = host.addFragment("outer", &file);
    host.addFragment("inner", &outer, &element);
    EXPECT_TRUE(holds(cooling));
    file.saveUnit = false;
    file.owner = nullptr;
    EXPECT_FALSE(holds(cooling)) << "the file has no save unit";
}

TEST_F(InformationFilesRule, ASubsystemHoldsAlsoIfTheFileIsKeptWithTheSubsystemItself) {
    auto &cooling = host.addSubsystem("Cooling");
    auto &element = host.addElement("Sensor", &cooling);
    auto &inside = host.addComponent("Inner", &cooling);
    inside.saveUnit = false;
    auto &file = host.addFile("Cooling", &inside);
    file.saveUnit = false;
    host.addFragment("part", &file, &element);
    ASSERT_EQ(file.getSaveUnit(), &cooling);
    EXPECT_TRUE(isFileNotSAMappedToUnit(&cooling, &inside));
}

TEST_F(InformationFilesRule, ASubsystemHoldsForASubsystemInsideThatHasNoFileOfItsOwn) {
    auto &cooling = host.addSubsystem("Cooling");
    auto &inner = host.addSubsystem("Inner", &cooling);
    addCodeFile("Code", &inner);
    EXPECT_FALSE(holds(cooling)) << "another save unit is passed over";
    inner.saveUnit = false;
    EXPECT_TRUE(holds(cooling)) << "the file is kept elsewhere";
}

TEST_F(InformationFilesRule, EachSubsystemLooksAtTheFilesOfItsOwnName) {
    auto &pumping = host.addSubsystem("Pumping");
    auto &cooling = host.addSubsystem("Cooling");
    auto &upper = host.addSubsystem("Drives", &pumping);
    auto &lower = host.addSubsystem("Drives", &cooling);
    auto &file = addCodeFile("Drives");
    host.addFragment("of lower", &file, &host.addElement("Motor", &lower));
    host.addFragment("of cooling", &file, &host.addElement("Fan", &cooling));
    InformationFiles rule;
    EXPECT_FALSE(rule.holdFor(&upper));
    EXPECT_TRUE(rule.holdFor(&lower));
    EXPECT_FALSE(rule.holdFor(&cooling));
}

TEST_F(InformationFilesRule, ASubsystemHoldsThroughATopLevelClassOnly) {
    auto &cooling = host.addSubsystem("Cooling");
    auto &pump = host.addClass("Pump", &cooling);
    auto &operation = host.addElement("start", &pump);
    host.addFragment("part", &addCodeFile("Cooling"), &operation);
    EXPECT_TRUE(holds(cooling));
    pump.topLevel = false;
    EXPECT_FALSE(holds(cooling));
}

TEST_F(InformationFilesRule, AFileBelowTheComponentsFoldersCountsToo) {
    auto &cooling = host.addSubsystem("Cooling");
    auto &element = host.addElement("Sensor", &cooling);
    auto &folder = host.addElement("folder", component);
    host.addFragment("part", &host.addFile("Cooling", &folder), &element);
    EXPECT_TRUE(holds(cooling));
}

TEST_F(InformationFilesRule, ASubsystemHoldsForAClassInsideThatHasNoFileOfItsOwn) {
    auto &cooling = host.addSubsystem("Cooling");
    auto &pump = host.addClass("Pump", &cooling);
    addCodeFile("Pump", &pump);
    EXPECT_FALSE(holds(cooling)) << "another save unit is passed over";
    pump.saveUnit = false;
    EXPECT_TRUE(holds(cooling));
}

TEST_F(InformationFilesRule, OnlySubsystemsAndClassesInsideAreTested) {
    auto &cooling = host.addSubsystem("Cooling");
    auto &notes = host.addEmbeddedFile("Notes.doc", &cooling);
    notes.saveUnit = false;
    addCodeFile("Notes", &notes);
    EXPECT_FALSE(holds(cooling));
}

TEST_F(InformationFilesRule, AClassIsNotSearchedInside) {
    auto &pump = host.addClass("Pump");
    auto &inner = host.addClass("Inner", &pump);
    inner.saveUnit = false;
    addCodeFile("Inner", &inner);
    EXPECT_FALSE(holds(pump));
}

TEST_F(InformationFilesRule, AListHoldsAsSoonAsOneUnitDoes) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    addCodeFile("Valve", &valve);
    CMUnitList units{nullptr, &pump};
    EXPECT_FALSE(shouldSetInformationFilesCheckBoxForUnitsList2(units));
    units.AddTail(&valve);
    EXPECT_TRUE(shouldSetInformationFilesCheckBoxForUnitsList2(units));
}

TEST_F(InformationFilesRule, AnItemListGoesThroughTheUnitsOfItsFiles) {
    auto &pump = host.addUnit("Pump");
    addCodeFile("Pump", &pump);
    CMArchiveItem unknown("New.ocl", "", CMArchiveItem::unknown, "", "");
    CMArchiveItem known("Pump.ocl", "", CMArchiveItem::unknown, "", "");
    CMArchiveItemList items;
    CMArchiveItem *entry = &unknown;
    items.AddTail(entry);
    EXPECT_FALSE(shouldSetInformationFilesCheckBoxForUnitsList(items));
    entry = &known;
    items.AddTail(entry);
    EXPECT_TRUE(shouldSetInformationFilesCheckBoxForUnitsList(items));
}

} // namespace
