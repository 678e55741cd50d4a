#include "tests/orchard/storage/Workbench.h"

#include "CM/host/DialogHelpers.h"
#include "CM/host/Iterators.h"
#include "CM/host/OrId.h"
#include "orchard/properties/PropertyTable.h"
#include "orchard/storage/UnitSearch.h"

using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

class SampleModel : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    template <class ITERATOR> static std::vector<std::string> namesOf(ITERATOR iterator) {
        std::vector<std::string> names;
        for (auto *object = iterator.first(); object != nullptr; object = iterator.next()) {
            names.push_back(object->getName().str());
        }
        return names;
    }
};

TEST_F(SampleModel, UnitsAreToldApartByADynamicCast) {
    EXPECT_NE(dynamic_cast<ISubsystem *>(unit("Drives")), nullptr);
    EXPECT_NE(dynamic_cast<IClass *>(unit("Valve")), nullptr);
    EXPECT_NE(dynamic_cast<IComponent *>(unit("Controller")), nullptr);
    EXPECT_NE(dynamic_cast<IFile *>(unit("DrivesCode")), nullptr);
    EXPECT_NE(dynamic_cast<IEmbededFile *>(unit("wiring.txt")), nullptr);
    EXPECT_EQ(dynamic_cast<IProject *>(unit("Valve")), nullptr);
}

TEST_F(SampleModel, ElementsInAUnitKnowTheUnitOfTheirFile) {
    IUnit *const alarms = unit("AlarmList");
    EXPECT_TRUE(alarms->isSaveUnit());
    const auto inside = orchard::elementsInside(*alarms);
    ASSERT_EQ(inside.size(), 3U);
    for (IDObject *const element : inside) {
        EXPECT_FALSE(element->isSaveUnit());
        EXPECT_EQ(element->getSaveUnit(), alarms);
        EXPECT_EQ(element->getOwner(), alarms);
        EXPECT_TRUE(alarms->isOwnedByMe(element));
        EXPECT_TRUE(project->isOwnedByMe(element));
    }
    EXPECT_FALSE(alarms->isOwnedByMe(alarms));
    EXPECT_EQ(orchard::typeOf(*inside[0]), "AlarmEntry[*]");
    EXPECT_EQ(inside[0]->getMetaClassDisplayName(), "Attribute");
    // A class that is part of another class's file returns that file, but a look-up of the file does not find it.
    auto *const entry = dynamic_cast<IClass *>(inside[2]);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->getFileName(), "AlarmList.ocl");
    EXPECT_STREQ(entry->getFileExtension(), ".ocl");
    EXPECT_EQ(IUnit::getByFile("AlarmList.ocl"), alarms);
    EXPECT_FALSE(entry->isTopLevel());
    EXPECT_TRUE(dynamic_cast<IClass *>(alarms)->isTopLevel());
}

TEST_F(SampleModel, AnEmbeddedFileHasAFileButIsNoSaveUnit) {
    auto *const wiring = dynamic_cast<IEmbededFile *>(unit("wiring.txt"));
    EXPECT_FALSE(wiring->isSaveUnit());
    EXPECT_EQ(wiring->getSaveUnit(), project);
    EXPECT_EQ(wiring->getFullFileName(), path("Pump_ory/wiring.txt"));
    EXPECT_TRUE(IEmbededFile::IsEmbededFile("wiring.txt"));
    EXPECT_TRUE(IEmbededFile::IsEmbededFile("unknown.pdf"));
    EXPECT_FALSE(IEmbededFile::IsEmbededFile("unknown.OCL"));
    EXPECT_FALSE(IEmbededFile::IsEmbededFile(unitFile("Valve.ocl")));
    EXPECT_FALSE(wiring->IsTargetReadOnly());
    std::filesystem::permissions(unitFile("wiring.txt"), std::filesystem::perms::owner_read);
    EXPECT_TRUE(wiring->IsTargetReadOnly());
}

TEST_F(SampleModel, UnitsAreFoundByTheirFiles) {
    IUnit *const alarms = unit("AlarmList");
    EXPECT_EQ(IUnit::getByFile(path("Pump_ory/Control/AlarmList.ocl")), alarms);
    EXPECT_EQ(IUnit::getByFile(path("Pump_ory/../Pump_ory\\Control//AlarmList.ocl")), alarms);
    EXPECT_EQ(IUnit::getByFile("Control\\AlarmList.ocl"), alarms);
    EXPECT_EQ(IUnit::getByFile("AlarmList.ocl"), alarms);
    EXPECT_EQ(IUnit::getByFile("Drives/AlarmList.ocl"), nullptr);
    EXPECT_EQ(IUnit::getByFile(""), nullptr);
    EXPECT_EQ(alarms->getNameForReposFiles(), alarms->getFullFileName());
    EXPECT_TRUE(IUnit::isFullPathRepFiles());
}

TEST_F(SampleModel, ABareNameOfTwoFilesMeansTheOneInTheUnitsDirectory) {
    std::filesystem::copy_file(unitFile("Control/AlarmList.ocl"), unitFile("AlarmList.ocl"));
    std::string text = read(unitFile("AlarmList.ocl"));
    for (std::size_t at = text.find(" id=\""), number = 1; at != std::string::npos;
         at = text.find(" id=\"", at + 1)) {
        text.replace(at + 5, 36, orchard::ElementId::numbered(number++).text());
    }
    write(unitFile("AlarmList.ocl"), text);
    edit(unitFile("Drives.osb"), "</subsystem>",
         "<unit kind=\"class\" id=\"" + orchard::ElementId::numbered(1).text() +
             "\" file=\"AlarmList.ocl\"/></subsystem>");
    reopen();
    ASSERT_NE(project, nullptr) << problem();
    EXPECT_EQ(IUnit::getByFile(unitFile("Control/AlarmList.ocl")), unit("Control/AlarmList"));
    // The directory of units contains a file of this name too; a path relative to the directory means that file.
    EXPECT_EQ(IUnit::getByFile("AlarmList.ocl"), unit("Drives/AlarmList"));
    EXPECT_EQ(orchard::findUnit(*project, "AlarmList").candidates.size(), 2U);
}

TEST_F(SampleModel, IteratorsWalkInModelOrder) {
    EXPECT_THAT(namesOf(IUnitAggregatesIterator(unit("Drives"), 0)),
                ElementsAre("Drives", "Pump", "Valve", "Sensors"));
    EXPECT_THAT(namesOf(IAggregatesIterator(unit("Drives"), 0)), ElementsAre("Pump", "Valve", "Sensors"));
    EXPECT_THAT(namesOf(IRecursiveIterator<IDObject, IAggregatesIterator>(unit("Sensors"), 0)),
                ElementsAre("LevelSensor", "zero", "span", "read", "FlowSensor", "pulsesPerLitre", "read"));
    EXPECT_EQ(namesOf(IUnitIterator(*IUnit::getRepositoryFiles())).size(), 17U);
    EXPECT_THAT(namesOf(IRecursiveIterator<IUnit, IUnitAggregatesIterator>(unit("Drives"), 1)),
                ElementsAre("Drives", "Pump", "Valve", "Sensors", "LevelSensor", "FlowSensor"));
    EXPECT_THAT(namesOf(IRecursiveIterator<IUnit, IUnitAggregatesIterator>(unit("Drives"), 0)),
                ElementsAre("Pump", "Valve", "Sensors", "LevelSensor", "FlowSensor"));
    IUnitAggregatesIterator none(nullptr, 0);
    EXPECT_EQ(none.first(), nullptr);
}

TEST_F(SampleModel, ElementsHaveTheIconOfTheirKind) {
    CImageList images;
    GetOrchardIconsList(images, true);
    const auto iconOf = [&images](const IDObject *object) { return images.name(oiGetObjectIcon(object)).str(); };
    EXPECT_EQ(iconOf(project), "project");
    EXPECT_EQ(iconOf(unit("Drives")), "subsystem");
    EXPECT_EQ(iconOf(unit("wiring.txt")), "embedded file");
    EXPECT_EQ(iconOf(project->getConfiguration()), "configuration");
    EXPECT_EQ(CMStateAwareTreeCtrl::GetCMStateImageInd(unit("Valve")), 0) << "no state is on display";
}

TEST_F(SampleModel, CodeFilesObserveWhatTheirFragmentsStandFor) {
    IFileList files;
    IFile::GetFilesObserveObject(unit("LevelRegulator"), files);
    ASSERT_EQ(files.GetCount(), 1);
    EXPECT_EQ(files.GetHead(), unit("ControlCode"));
    IFileFragmentIterator fragments;
    files.GetHead()->iteratorFragments(fragments, 1);
    ASSERT_NE(fragments.first(), nullptr);
    EXPECT_EQ(fragments.first()->getElement(), unit("PumpController"));
    EXPECT_EQ(fragments.next()->getElement(), unit("LevelRegulator"));
    EXPECT_EQ(fragments.next(), nullptr);
    IFile::GetFilesObserveObject(unit("Valve"), files);
    EXPECT_EQ(files.GetCount(), 1);
}

TEST_F(SampleModel, TheActiveConfigurationBelongsToTheActiveComponent) {
    ASSERT_NE(project->getComponent(), nullptr);
    EXPECT_EQ(project->getComponent(), project->doGetComponent());
    EXPECT_EQ(project->getComponent()->getName(), "Controller");
    EXPECT_FALSE(project->getComponent()->DoGetActiveConfig()->isRespectMode());
    model->activeConfiguration = orchard::Element::of(orchard::elementsInside(*unit("Controller"))[1])->id();
    EXPECT_TRUE(project->getComponent()->DoGetActiveConfig()->isRespectMode());
    EXPECT_EQ(project->getConfiguration()->getName(), "Release");
}

TEST_F(SampleModel, ExtensionsTellTheTypes) {
    EXPECT_EQ(IProject::fileExtension2UnitType(".osb"), "Subsystem");
    EXPECT_EQ(IProject::fileExtension2UnitType(".OCL"), "Class");
    EXPECT_EQ(IProject::fileExtension2UnitType(".txt"), "");
    EXPECT_EQ(IProject::fileExtension2UnitType(""), "");
    EXPECT_EQ(IProject::staticGetNewFileExtension(), ".ory");
    EXPECT_EQ(IProject::staticGetFolderExtension(), ".ory");
}

TEST_F(SampleModel, AChangeMarksTheUnitOfTheFileAndIsTold) {
    std::vector<std::string> told;
    const int number =
        orchard::Workspace::instance().observe([&](IDObject &object) { told.push_back(object.getName().str()); });
    const std::size_t before = orchard::Workspace::instance().codeChanges();
    orchard::setName(*orchard::elementsInside(*unit("Valve"))[0], "angle");
    EXPECT_TRUE(unit("Valve")->isModified());
    EXPECT_FALSE(unit("Drives")->isModified());
    {
        const INObject::IgnoreCGModification ignore;
        orchard::setDescription(*unit("Panel"), "changed");
    }
    EXPECT_THAT(told, ElementsAre("angle", "Panel"));
    EXPECT_EQ(orchard::Workspace::instance().codeChanges(), before + 1);
    orchard::Workspace::instance().forget(number);
}

TEST_F(SampleModel, PropertiesAreInheritedFromOwnerToProject) {
    const IProperty *none = unit("Valve")->findProperty("S", "M", "K", IProperty::inherited);
    EXPECT_EQ(none, nullptr);
    element(project).makeProperties().set("S", "M", "K", "String", "project");
    IDObject *const attribute = orchard::elementsInside(*unit("Valve"))[0];
    EXPECT_EQ(attribute->findProperty("S", "M", "K", IProperty::inherited)->getValue(), "project");
    EXPECT_EQ(attribute->findProperty("S", "M", "K", IProperty::local), nullptr);
    unit("Drives")->storeProperty("S", "M", attribute->findProperty("S", "M", "K", 0));
    unit("Drives")->findOwnProperty("S", "M", "K")->setValue("drives");
    EXPECT_EQ(attribute->findProperty("S", "M", "K", IProperty::inherited)->getValue(), "drives");
    EXPECT_EQ(unit("Panel")->findProperty("S", "M", "K", IProperty::inherited)->getValue(), "project");
    EXPECT_TRUE(unit("Drives")->isModified());
    EXPECT_FALSE(project->isModified());
}

TEST_F(SampleModel, HasOneWorkspaceObject) {
    IWorkspace *const workspace = CurrentWorkspace::Workspace()->getWorkspace();
    ASSERT_NE(workspace, nullptr);
    EXPECT_FALSE(workspace->isSaveUnit());
    EXPECT_EQ(workspace->getFileName(), "");
    EXPECT_EQ(workspace->getFullFileName(), "");
}

} // namespace
