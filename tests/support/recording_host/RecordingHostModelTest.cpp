// Tests the model of the recording host: objects, handles, properties, iterators.
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IHandle.h"
#include "CM/host/IPN.h"
#include "CM/host/Iterators.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <gmock/gmock.h>
#include <stdexcept>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class RecordingHostModel : public testing::Test {
  protected:
    RecordingHost host;
};

TEST_F(RecordingHostModel, StartsWithoutAProject) {
    EXPECT_EQ(CurrentWorkspace::GetActiveProject(), nullptr);
    EXPECT_EQ(CurrentProject::Project(), nullptr);
    EXPECT_EQ(IUnit::getByFile("Pump.ocl"), nullptr);
    EXPECT_THAT(host.model.filesAskedFor, ElementsAre(CString("Pump.ocl")));
}

TEST_F(RecordingHostModel, MakesTheFirstProjectTheActiveOne) {
    recording::Project &first = host.addProject("Plant", "/models");
    recording::Project &second = host.addProject("Other");
    EXPECT_EQ(CurrentWorkspace::GetActiveProject(), &first);
    EXPECT_NE(CurrentProject::Project(), nullptr);
    EXPECT_EQ(CurrentWorkspace::Workspace()->getWorkspace(), host.model.workspace);
    EXPECT_EQ(second.getOwner(), nullptr);
    EXPECT_EQ(first.getProjectFileDirectory(), "/models");
    EXPECT_EQ(first.getOwnDirectory(), "/models/_Plant");
}

TEST_F(RecordingHostModel, NamesTheFileOfAUnit) {
    host.addProject();
    recording::Class &pump = host.addUnit("Pump");
    EXPECT_EQ(pump.getFullFileName(), "/models/_Plant/Pump.ocl");
    EXPECT_EQ(pump.getFileNameNoExt(), "Pump");
    EXPECT_STREQ(pump.getFileExtension(), ".ocl");
    EXPECT_EQ(IUnit::getByFile("Pump.ocl"), &pump);
    host.model.fullPathRepFiles = true;
    EXPECT_EQ(IUnit::getByFile("Pump.ocl"), nullptr);
    EXPECT_EQ(IUnit::getByFile("/models/_Plant/Pump.ocl"), &pump);
}

TEST_F(RecordingHostModel, FindsTheUnitThatHoldsAnElement) {
    host.addProject();
    recording::Class &pump = host.addUnit("Pump");
    recording::Element &speed = host.addElement("speed", &pump);
    EXPECT_EQ(speed.getSaveUnit(), &pump);
    EXPECT_TRUE(host.model.activeProject->isOwnedByMe(&speed));
    EXPECT_FALSE(speed.isOwnedByMe(&pump));
}

TEST_F(RecordingHostModel, RecordsWhatIsSetOnAUnit) {
    host.addProject();
    recording::Class &pump = host.addUnit("Pump");
    pump.setModified(1, false);
    pump.setCMState(4);
    pump.updateCMHeader();
    pump.updateMode("locked");
    pump.setBatchArchive("/archive");
    pump.saveUnitToFile("/tmp/x", orySaveAlways);
    EXPECT_THAT(host.calls, ElementsAre("set modified Pump value=1 notify=0", "set state Pump 4",
                                        "update header Pump 1", "update mode Pump locked",
                                        "set batch archive Pump /archive", "save Pump /tmp/x option=1"));
    EXPECT_EQ(pump.getCMState(), 4);
    EXPECT_FALSE(pump.isModified());
}

TEST_F(RecordingHostModel, LooksForArchivesUpwards) {
    host.addProject();
    recording::Subsystem &drives = host.addSubsystem("Drives");
    recording::Class &pump = host.addUnit("Pump", &drives);
    CString archive = "as it was";
    EXPECT_EQ(pump.getBatchArchiveRecursive(archive), 0);
    EXPECT_EQ(archive, "as it was");
    drives.batchArchive = "/archive";
    EXPECT_EQ(pump.getBatchArchiveRecursive(archive), 1);
    EXPECT_EQ(archive, "/archive");
}

TEST_F(RecordingHostModel, LetsAHandleAnswerWhatTheTestArranges) {
    host.addProject();
    recording::Class &pump = host.addUnit("Pump");
    IHandle *const handle = pump.getHandle();
    EXPECT_EQ(host.handlesAlive, 1);
    EXPECT_EQ(handle->doGetObject(), &pump);
    recording::Class &other = host.replaceClass(pump);
    EXPECT_EQ(handle->doGetObject(), &other);
    EXPECT_EQ(IUnit::getByFile("Pump.ocl"), &other);
    other.beingTakenDown = true;
    EXPECT_EQ(handle->doGetObject(), &other);
    EXPECT_EQ(handle->doGetSafeObject(), nullptr);
    host.removeObject(other);
    EXPECT_EQ(handle->doGetObject(), nullptr);
    handle->release();
    EXPECT_EQ(host.handlesAlive, 0);
}

TEST_F(RecordingHostModel, RemovesAnObjectWithAllThatItOwns) {
    auto &project = host.addProject();
    recording::Subsystem &drives = host.addSubsystem("Drives");
    recording::Class &pump = host.addUnit("Pump", &drives);
    IHandle *const handle = pump.getHandle();
    host.removeObject(drives);
    EXPECT_EQ(handle->doGetObject(), nullptr);
    EXPECT_EQ(IUnit::getByFile("Pump.ocl"), nullptr);
    EXPECT_EQ(IUnit::getByFile("Drives.osb"), nullptr);
    EXPECT_THAT(project.inside, IsEmpty());
    handle->release();
}

TEST_F(RecordingHostModel, UsesTheAddressOfARemovedObjectAgainOnlyWhenATestAsksForIt) {
    host.addProject();
    const recording::Class *const pump = &host.addUnit("Pump");
    host.removeObject(*host.model.activeProject->inside.back());
    EXPECT_NE(&host.addUnit("Valve"), pump);
    host.storage.nextAddress = pump;
    EXPECT_EQ(&host.addUnit("Tank"), pump);
    EXPECT_NE(&host.addUnit("Pipe"), pump);
}

TEST_F(RecordingHostModel, RefusesAnAddressThatIsNotFreeOrHasAnotherSize) {
    host.addProject();
    auto &pump = host.addUnit("Pump");
    host.storage.nextAddress = &pump;
    EXPECT_THROW(host.addUnit("Valve"), std::logic_error);
    host.removeObject(pump);
    host.storage.nextAddress = &pump;
    EXPECT_THROW(host.addElement("speed"), std::logic_error);
}

TEST_F(RecordingHostModel, InheritsPropertiesFromOwnerProjectAndInstallation) {
    recording::Project &project = host.addProject();
    recording::Subsystem &drives = host.addSubsystem("Drives");
    recording::Class &pump = host.addUnit("Pump", &drives);
    const auto value = [&](int where) {
        IProperty *const found = pump.findProperty(IPN::CM, "rcs", "K", where);
        return found == nullptr ? CString("none") : found->getValue();
    };
    EXPECT_EQ(value(0), "none");
    host.setToolDefault("rcs", "K", "installation");
    EXPECT_EQ(value(0), "installation");
    host.setProperty(project, IPN::CM, "rcs", "K", "project");
    EXPECT_EQ(value(0), "project");
    host.setProperty(drives, IPN::CM, "rcs", "K", "owner");
    EXPECT_EQ(value(0), "owner");
    EXPECT_EQ(value(1), "none");
    EXPECT_EQ(pump.findOwnProperty(IPN::CM, "rcs", "K"), nullptr);
    host.setProperty(pump, IPN::CM, "rcs", "K", "own");
    EXPECT_EQ(value(1), "own");
}

TEST_F(RecordingHostModel, RecordsEveryLookUpWithItsFixedArguments) {
    recording::Project &project = host.addProject();
    static_cast<void>(project.findProperty(IPN::CM, IPN::General, "UseSCCtool", 0, 1, 0, 0, 1, 0, 0));
    ASSERT_EQ(host.lookups.size(), 1U);
    const recording::Lookup &lookup = host.lookups.front();
    EXPECT_EQ(lookup.object, &project);
    EXPECT_EQ(lookup.property.metaclass, "General");
    EXPECT_EQ(lookup.property.key, "UseSCCtool");
    EXPECT_EQ(lookup.where, 0);
    EXPECT_THAT(lookup.rest, ElementsAre(1, 0, 0, 1, 0, 0));
    EXPECT_FALSE(lookup.found);
}

TEST_F(RecordingHostModel, StoresACopyOfAProperty) {
    recording::Project &project = host.addProject();
    IProperty copy(&host.setToolDefault("rcs", "K", "installation"));
    copy.setValue("changed");
    project.storeProperty(IPN::CM, "rcs", &copy);
    EXPECT_EQ(project.findProperty(IPN::CM, "rcs", "K", 1)->getValue(), "changed");
    project.findProperty(IPN::CM, "rcs", "K", 1)->setValue("again");
    EXPECT_THAT(host.calls, ElementsAre("set property K=changed",
                                        "store property ConfigurationManagement/rcs/K=changed on Plant",
                                        "set property K=again", "notify observers of Plant"));
}

TEST_F(RecordingHostModel, WalksTheUnitItselfAndTheUnitsInside) {
    host.addProject();
    recording::Subsystem &drives = host.addSubsystem("Drives");
    recording::Class &pump = host.addUnit("Pump", &drives);
    host.addElement("note", &drives);
    IUnitAggregatesIterator units(&drives, 0);
    EXPECT_EQ(units.first(), &drives);
    EXPECT_EQ(units.next(), &pump);
    EXPECT_EQ(units.next(), nullptr);
}

TEST_F(RecordingHostModel, WalksWholeSubtreesWithTheRootIfAsked) {
    host.addProject();
    recording::Subsystem &drives = host.addSubsystem("Drives");
    recording::Subsystem &sensors = host.addSubsystem("Sensors", &drives);
    recording::Class &level = host.addUnit("Level", &sensors);
    recording::Element &speed = host.addElement("speed", &level);
    recording::Class &pump = host.addUnit("Pump", &drives);
    const auto walked = [](auto iterator) {
        std::vector<const IDObject *> objects;
        for (const IDObject *object = iterator.first(); object != nullptr; object = iterator.next()) {
            objects.push_back(object);
        }
        return objects;
    };
    using Units = IRecursiveIterator<IUnit, IUnitAggregatesIterator>;
    using Objects = IRecursiveIterator<IDObject, IAggregatesIterator>;
    EXPECT_THAT(walked(Units(&drives, 1)), ElementsAre(&drives, &sensors, &level, &pump));
    EXPECT_THAT(walked(Units(&drives, 0)), ElementsAre(&sensors, &level, &pump));
    EXPECT_THAT(walked(Objects(&drives, 0)), ElementsAre(&sensors, &level, &speed, &pump));
    EXPECT_THAT(walked(Objects(&drives, 1)), ElementsAre(&drives, &sensors, &level, &speed, &pump));
    EXPECT_THAT(walked(Units(nullptr, 1)), IsEmpty());
}

TEST_F(RecordingHostModel, FindsCodeFilesAndTheirFragments) {
    host.addProject();
    recording::Class &pump = host.addUnit("Pump");
    recording::File &code = host.addFile("pump");
    code.observed = {&pump};
    recording::Fragment &outer = host.addFragment("outer", &code, &pump);
    recording::Fragment &inner = host.addFragment("inner", &outer);
    IFileList files;
    IFile::GetFilesObserveObject(&pump, files);
    EXPECT_EQ(IFileIterator(files).first(), &code);
    IFileFragmentIterator fragments;
    code.iteratorFragments(fragments, 0);
    EXPECT_EQ(fragments.first(), &outer);
    EXPECT_EQ(fragments.next(), nullptr);
    code.iteratorFragments(fragments, 1);
    fragments.first();
    EXPECT_EQ(fragments.next(), &inner);
    EXPECT_EQ(outer.getElement(), &pump);
}

TEST_F(RecordingHostModel, TellsEmbeddedFilesByTheirExtension) {
    host.addProject();
    recording::EmbeddedFile &file = host.addEmbeddedFile("plan.doc");
    file.targetReadOnly = true;
    EXPECT_TRUE(IEmbededFile::IsEmbededFile("plan.doc"));
    EXPECT_FALSE(IEmbededFile::IsEmbededFile("Pump.ocl"));
    EXPECT_EQ(file.getEmbeddedFileName(), "plan.doc");
    EXPECT_EQ(IProject::fileExtension2UnitType(".ocl"), "Class");
    EXPECT_EQ(IProject::fileExtension2UnitType(".doc"), "");
}

TEST_F(RecordingHostModel, KeepsTheActiveComponentAndItsConfiguration) {
    recording::Project &project = host.addProject();
    recording::Component &plc = host.addComponent("Plc");
    recording::Configuration &release = host.addConfiguration("Release", plc);
    release.respectMode = true;
    EXPECT_EQ(project.getComponent(), &plc);
    EXPECT_EQ(project.getConfiguration(), &release);
    EXPECT_TRUE(plc.DoGetActiveConfig()->isRespectMode());
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(RecordingHostModel, KeepsTheSavedUnitsUntilTheyAreApplied) {
    host.addProject();
    recording::Class &pump = host.addUnit("Pump");
    CurrentWorkspace::Workspace()->getWorkspace()->AddToSavedUnitsList(&pump);
    EXPECT_THAT(host.model.workspace->savedUnits, ElementsAre(&pump));
    CurrentWorkspace::ApplySavedUnitsListToNonActiveProjects();
    EXPECT_THAT(host.model.workspace->savedUnits, IsEmpty());
    EXPECT_THAT(host.calls, ElementsAre("add to saved units Pump", "apply saved units"));
}

} // namespace
