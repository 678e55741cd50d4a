#include "tests/orchard/storage/Workbench.h"

#include "CM/host/OrId.h"
#include "CM/host/Reload.h"
#include "CM/host/Utilities.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class AddToModel : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    [[nodiscard]] IUnit *add(std::string_view file, std::string_view folder = "Pump_ory") const {
        return ATMFacade(path(folder)).addToModel(file, 0, 0, 0, false, nullptr);
    }
    static std::string newClass(const std::string &owner, const std::string &name) {
        return "<class format=\"1\" id=\"00000000-0000-0000-0000-0000000000aa\"" +
               (owner.empty() ? owner : " owner=\"" + owner + "\"") + ">\n  <name>" + name + "</name>\n</class>\n";
    }
};

TEST_F(AddToModel, TakesThePlaceOfTheUnitWithTheFile) {
    IUnit *const valve = unit("Valve");
    IUnit *const fresh = add("Valve.ocl");
    ASSERT_NE(fresh, nullptr);
    EXPECT_NE(fresh, valve);
    EXPECT_EQ(orchard::elementsInside(*unit("Drives"))[1], fresh);
}

TEST_F(AddToModel, WithTheFlagForItAFileTakesThePlaceOfTheUnitWithItsIdentifier) {
    const std::string id = unit("Valve")->getOrId().getOrIdStr().str();
    std::filesystem::copy_file(unitFile("Valve.ocl"), unitFile("Gate.ocl"));
    EXPECT_EQ(add("Gate.ocl"), nullptr);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("belongs to another element, 'Valve'")));
    reloadForDupId = true;
    IUnit *const fresh = add("Gate.ocl");
    reloadForDupId = false;
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->getOrId().getOrIdStr().str(), id);
    EXPECT_EQ(unit("Valve"), fresh);
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), nullptr);
    EXPECT_TRUE(std::filesystem::exists(unitFile("Valve.ocl"))) << "it is the user's to remove";
    EXPECT_TRUE(unit("Drives")->isModified());
}

TEST_F(AddToModel, LoadsAStub) {
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Valve"), false).empty());
    IUnit *const valve = add(unitFile("Valve.ocl"), "elsewhere");
    ASSERT_EQ(valve, unit("Valve"));
    EXPECT_FALSE(valve->isStub());
}

TEST_F(AddToModel, ANewFileGoesToTheOwnerThatItNames) {
    write(unitFile("Gate.ocl"), newClass(unit("Sensors")->getOrId().getOrIdStr().str(), "Gate"));
    IUnit *const gate = add("Gate.ocl");
    ASSERT_NE(gate, nullptr);
    EXPECT_EQ(gate->getOwner(), unit("Sensors"));
    EXPECT_TRUE(unit("Sensors")->isModified());
    EXPECT_EQ(IUnit::getByFile("Gate.ocl"), gate);
    EXPECT_TRUE(orchard::saveProject(project).empty());
    reopen();
    EXPECT_EQ(unit("Gate")->getOwner(), unit("Sensors"));
}

TEST_F(AddToModel, WithoutANamedOwnerItsDirectoryDecides) {
    write(unitFile("Control/Gate.ocl"), newClass("", "Gate"));
    ASSERT_NE(add("Gate.ocl", "Pump_ory/Control"), nullptr);
    EXPECT_EQ(unit("Gate")->getOwner(), unit("Control"));
    EXPECT_FALSE(unit("Gate")->isExternalUnitRecursive());
}

TEST_F(AddToModel, AFileElsewhereBecomesAnExternalUnitOfTheProject) {
    write(path("shared/Gate.ocl"), newClass("", "Gate"));
    ASSERT_NE(add("Gate.ocl", "shared"), nullptr);
    EXPECT_EQ(unit("Gate")->getOwner(), project);
    EXPECT_TRUE(unit("Gate")->isExternalUnitRecursive());
    EXPECT_EQ(unit("Gate")->getFullFileName(), path("shared/Gate.ocl"));
    EXPECT_TRUE(orchard::saveProject(project).empty());
    reopen();
    EXPECT_EQ(unit("Gate")->getFullFileName(), path("shared/Gate.ocl"));
}

TEST_F(AddToModel, AUnitFollowsItsFile) {
    std::filesystem::rename(unitFile("Valve.ocl"), unitFile("Gate.ocl"));
    IUnit *const gate = add("Gate.ocl");
    ASSERT_NE(gate, nullptr);
    EXPECT_EQ(unit("Valve"), gate);
    EXPECT_EQ(gate->getFileName(), "Gate.ocl");
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), nullptr);
}

TEST_F(AddToModel, ACopyOfAUnitIsRefused) {
    std::filesystem::copy_file(unitFile("Valve.ocl"), unitFile("Gate.ocl"));
    IUnit *const valve = unit("Valve");
    EXPECT_EQ(add("Gate.ocl"), nullptr);
    EXPECT_THAT(messages,
                ElementsAre(AllOf(HasSubstr("/Gate.ocl:2:"), HasSubstr("belongs to another element, 'Valve'"))));
    EXPECT_EQ(unit("Valve"), valve);
}

TEST_F(AddToModel, WhatIsNoUnitFileIsToldOnce) {
    write(unitFile("Gate.ocl"), "hello");
    EXPECT_EQ(add("Gate.ocl"), nullptr);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("/Gate.ocl:1:")));
    EXPECT_EQ(add("None.ocl"), nullptr);
    EXPECT_THAT(messages.back(), HasSubstr("/None.ocl: the file is missing"));
}

TEST_F(AddToModel, AnEmbeddedFileStaysWhatItIs) {
    IUnit *const wiring = unit("wiring.txt");
    EXPECT_EQ(add("wiring.txt"), wiring);
}

} // namespace
