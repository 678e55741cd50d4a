#include "tests/orchard/storage/Workbench.h"

using testing::HasSubstr;

namespace {

class Rename : public Workbench {
  protected:
    void SetUp() override { openSample(); }
};

TEST_F(Rename, TheFileAndTheIndexFollow) {
    IUnit *const valve = unit("Valve");
    EXPECT_TRUE(valve->approveCMRename("Gate"));
    valve->setFileName("Gate");
    EXPECT_EQ(valve->getFileName(), "Gate.ocl");
    EXPECT_EQ(valve->getOldFileName(), "Valve.ocl");
    EXPECT_EQ(valve->getFileNameNoExt(), "Gate");
    EXPECT_TRUE(std::filesystem::exists(unitFile("Gate.ocl")));
    EXPECT_FALSE(std::filesystem::exists(unitFile("Valve.ocl")));
    EXPECT_EQ(IUnit::getByFile("Gate.ocl"), valve);
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), nullptr);
    EXPECT_TRUE(unit("Drives")->isModified()) << "its file names the unit's";
}

TEST_F(Rename, IsNotApprovedForATakenOrAHostileName) {
    EXPECT_FALSE(unit("Valve")->approveCMRename("Panel"));
    EXPECT_FALSE(unit("Valve")->approveCMRename("a$b"));
    EXPECT_TRUE(unit("Valve")->approveCMRename("Valve.ocl"));
    unit("Valve")->setFileName("a`b");
    EXPECT_EQ(unit("Valve")->getFileName(), "Valve.ocl");
    EXPECT_EQ(messages.size(), 1U);
}

TEST_F(Rename, ADirectoryMovesWithAllBelow) {
    unit("Control")->setMYpersAs("Logic");
    EXPECT_EQ(unit("AlarmList")->getFullFileName(), path("Pump_ory/Logic/AlarmList.ocl"));
    EXPECT_EQ(IUnit::getByFile("Logic/AlarmList.ocl"), unit("AlarmList"));
    EXPECT_EQ(IUnit::getByFile("Control/AlarmList.ocl"), nullptr);
}

} // namespace
