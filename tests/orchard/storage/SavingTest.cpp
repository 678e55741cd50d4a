#include "tests/orchard/storage/Workbench.h"

#include "orchard/properties/PropertyTable.h"
#include "orchard/storage/UnitSearch.h"

#include <sys/resource.h>
#include <sys/stat.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class Saving : public Workbench {
  protected:
    void SetUp() override { openSample(); }
};

TEST_F(Saving, WritesOnlyWhatWasChangedUnlessToldOtherwise) {
    orchard::setDescription(*unit("Valve"), "Opens & <closes>.\r\n  \"twice\"");
    edit(unitFile("Pump.ocl"), "One pump", "Some pump");
    EXPECT_TRUE(orchard::saveProject(project).empty());
    EXPECT_THAT(read(unitFile("Pump.ocl")), HasSubstr("Some pump"));
    EXPECT_FALSE(unit("Valve")->isModified());
    reopen();
    EXPECT_EQ(orchard::descriptionOf(*unit("Valve")), "Opens & <closes>.\r\n  \"twice\"");
    edit(unitFile("Pump.ocl"), "</class>\n", "</class>\n\n\r\n");
    reopen();
    EXPECT_EQ(unit("Pump.ocl")->orySave2File(orySaveDefault), 1);
    EXPECT_TRUE(read(unitFile("Pump.ocl")).ends_with("</class>\n\n\r\n"));
    EXPECT_EQ(unit("Pump.ocl")->orySave2File(orySaveAlways), 1);
    EXPECT_FALSE(read(unitFile("Pump.ocl")).ends_with("\n\n\r\n"));
}

TEST_F(Saving, TheSameModelGivesTheSameFiles) {
    for (const auto &row : orchard::workspaceUnits(*project)) {
        const std::string file = row.unit->getFullFileName().str();
        const std::string before = read(file);
        if (row.unit->isSaveUnit()) {
            EXPECT_EQ(row.unit->orySave2File(orySaveAlways), 1);
        }
        EXPECT_EQ(read(file), before) << file;
    }
}

TEST_F(Saving, KeepsTheHeaderThatAToolHasWritten) {
    edit(unitFile("Valve.ocl"), "<class ", "<!--\n$Id: Valve.ocl,v 1.2 $ a-b\n-->\n<class ");
    orchard::setDescription(*unit("Valve"), "changed");
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveDefault), 1);
    EXPECT_THAT(read(unitFile("Valve.ocl")), HasSubstr("?>\n<!--\n$Id: Valve.ocl,v 1.2 $ a-b\n-->\n<class "));
    EXPECT_EQ(unit("Valve")->getCMHeader(), "");
    EXPECT_TRUE(unit("Valve")->updateCMHeader());
    EXPECT_EQ(unit("Valve")->getCMHeader(), "$Id: Valve.ocl,v 1.2 $ a-b");
}

TEST_F(Saving, AHeaderThatAToolHasWrittenSinceWinsOverTheOneThatWasRead) {
    edit(unitFile("Valve.ocl"), "<class ", "<!--\n$Id: 1.2 $\n-->\n<class ");
    ASSERT_TRUE(unit("Valve")->updateCMHeader());
    edit(unitFile("Valve.ocl"), "$Id: 1.2 $", "$Id: 1.3 $");
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveAlways), 1);
    EXPECT_THAT(read(unitFile("Valve.ocl")), HasSubstr("$Id: 1.3 $"));
}

TEST_F(Saving, AFileThatAnotherProgramChangedIsNotWrittenOver) {
    orchard::setDescription(*unit("Valve"), "changed");
    edit(unitFile("Valve.ocl"), "A motor valve.", "A valve of somebody else.");
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveDefault), 0);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("changed by another program")));
    EXPECT_THAT(read(unitFile("Valve.ocl")), HasSubstr("A valve of somebody else."));
    EXPECT_TRUE(unit("Valve")->isModified());
    EXPECT_EQ(unit("Valve")->saveUnitToFile(path("copy.ocl"), orySaveAlways), 1);
    edit(unitFile("Valve.ocl"), "A valve of somebody else.", "A motor valve.");
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveDefault), 1) << "it is what it was again";
    orchard::setDescription(*unit("Valve"), "once more");
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveDefault), 1) << "the file is what was saved";
    std::filesystem::remove(unitFile("Valve.ocl"));
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveAlways), 1) << "a missing file is written anew";
}

TEST_F(Saving, OtherLineEndsAreNoChangeOfTheFile) {
    std::string text = read(unitFile("Valve.ocl"));
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2)) {
        text.insert(at, 1, '\r');
    }
    write(unitFile("Valve.ocl"), text);
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveAlways), 1);
}

TEST_F(Saving, AHeaderThatWouldNotBeReadBackIsRefused) {
    std::filesystem::remove(unitFile("Valve.ocl"));
    element(unit("Valve")).setHeader(std::string_view("a\0b", 3));
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveAlways), 0);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("its header holds the control character 0x00")));
}

TEST_F(Saving, AnElementWithoutANameIsRefused) {
    element(unit("Valve")).children().front()->setName("");
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveAlways), 0);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("the attribute ")));
    EXPECT_THAT(messages, ElementsAre(HasSubstr(" has no name")));
}

TEST_F(Saving, TheDirectoryOfAMovedUnitIsMade) {
    unit("Control")->setMYpersAs("New/Logic");
    EXPECT_EQ(unit("AlarmList")->orySave2File(orySaveAlways), 1);
    EXPECT_THAT(read(unitFile("New/Logic/AlarmList.ocl")), HasSubstr("AlarmList"));
}

TEST_F(Saving, AReadOnlyFileIsNotWrittenOver) {
    ::chmod(unitFile("Valve.ocl").c_str(), 0444);
    const std::string before = read(unitFile("Valve.ocl"));
    orchard::setDescription(*unit("Valve"), "changed");
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveDefault), 0);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("the file is read-only; check the unit out")));
    EXPECT_EQ(orchard::saveProject(project).size(), 1U);
    EXPECT_EQ(read(unitFile("Valve.ocl")), before);
    EXPECT_TRUE(unit("Valve")->isModified());
}

TEST_F(Saving, ForTheSaveCallbackTellsAllThatCouldNotBeSaved) {
    orchard::saveActiveProject();
    EXPECT_TRUE(messages.empty());
    ::chmod(unitFile("Valve.ocl").c_str(), 0444);
    for (const char *const name : {"Valve", "Panel", "Drives"}) {
        orchard::setDescription(*unit(name), "changed");
    }
    orchard::saveActiveProject();
    EXPECT_THAT(messages, ElementsAre(testing::AllOf(HasSubstr("Not everything could be saved"),
                                                     HasSubstr("Valve.ocl: "), HasSubstr("check the unit out"))));
    EXPECT_TRUE(unit("Valve")->isModified());
    EXPECT_THAT(read(unitFile("Panel.ocl")), HasSubstr("changed"));
    EXPECT_THAT(read(unitFile("Drives.osb")), HasSubstr("changed"));
    orchard::closeAllProjects();
    orchard::saveActiveProject();
    EXPECT_EQ(messages.size(), 1U);
}

TEST_F(Saving, AFullDiskLeavesTheOldFileAndTheChange) {
    const std::string before = read(unitFile("Valve.ocl"));
    orchard::setDescription(*unit("Valve"), std::string(5000, 'x'));
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit tiny{100, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &tiny);
    const int saved = unit("Valve")->orySave2File(orySaveDefault);
    setrlimit(RLIMIT_FSIZE, &old);
    EXPECT_EQ(saved, 0);
    EXPECT_EQ(read(unitFile("Valve.ocl")), before);
    EXPECT_TRUE(unit("Valve")->isModified());
}

TEST_F(Saving, AValueThatXmlCanNotHoldIsRefused) {
    orchard::setDescription(*unit("Valve"), std::string("a\x02z"));
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveDefault), 0);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("control character 0x02")));
}

TEST_F(Saving, AStubIsNotSaved) {
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Valve"), false).empty());
    EXPECT_EQ(unit("Valve")->orySave2File(orySaveAlways), 0);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("it isn't loaded")));
}

TEST_F(Saving, PropertiesAndArchiveSettingsComeBack) {
    IUnit *const drives = unit("Drives");
    element(drives).makeProperties().set("S", "M", "Key", "Text", "two\nlines & more");
    drives->setSccArchive("proj", "$/aux");
    drives->setBatchArchive("/archive");
    EXPECT_TRUE(drives->isModified());
    EXPECT_TRUE(orchard::saveProject(project).empty());
    reopen();
    const IProperty *const property = unit("Drives")->findOwnProperty("S", "M", "Key");
    ASSERT_NE(property, nullptr);
    EXPECT_EQ(property->getValue(), "two\nlines & more");
    CString name;
    CString aux;
    CString batch;
    EXPECT_EQ(unit("Valve")->getSccArchiveRecursive(name, aux), 1);
    EXPECT_EQ(name + "|" + aux, "proj|$/aux");
    EXPECT_EQ(unit("Valve")->getBatchArchiveRecursive(batch), 1);
    EXPECT_EQ(batch, "/archive");
    EXPECT_EQ(unit("Control")->getBatchArchiveRecursive(batch), 0);
}

TEST_F(Saving, ToAnotherFileLeavesTheUnitModified) {
    orchard::setDescription(*unit("Valve"), "changed");
    EXPECT_EQ(unit("Valve")->saveUnitToFile(path("copy.ocl"), orySaveAlways), 1);
    EXPECT_THAT(read(path("copy.ocl")), HasSubstr("changed"));
    EXPECT_TRUE(unit("Valve")->isModified());
}

} // namespace
