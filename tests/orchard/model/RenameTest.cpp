#include "tests/orchard/storage/Workbench.h"

#include <sys/stat.h>
#include <unistd.h>
#include <utility>

using testing::HasSubstr;

namespace {

class Rename : public Workbench {
  protected:
    void SetUp() override { openSample(); }
};

TEST_F(Rename, TheFileAndTheIndexFollow) {
    IUnit *const valve = unit("Valve");
    ASSERT_EQ(IUnit::getByFile("Valve.ocl"), valve);
    EXPECT_TRUE(valve->approveCMRename("Gate"));
    valve->setFileName("Gate");
    EXPECT_EQ(valve->getFileName(), "Gate.ocl");
    EXPECT_EQ(valve->getOldFileName(), "Valve.ocl");
    EXPECT_EQ(valve->getFileNameNoExt(), "Gate");
    EXPECT_TRUE(std::filesystem::exists(unitFile("Gate.ocl")));
    EXPECT_FALSE(std::filesystem::exists(unitFile("Valve.ocl")));
    EXPECT_EQ(IUnit::getByFile("Gate.ocl"), valve);
    EXPECT_EQ(IUnit::getByFile("Valve.ocl"), nullptr);
    EXPECT_EQ(IUnit::getByFile(unitFile("Gate.ocl")), valve);
    EXPECT_EQ(IUnit::getByFile(unitFile("Valve.ocl")), nullptr);
    EXPECT_TRUE(unit("Drives")->isModified()) << "its file names the unit's";
}

TEST_F(Rename, AnExtensionThatIsInTheNameAlreadyStandsOnce) {
    unit("Valve")->setFileName("Gate.OCL");
    EXPECT_EQ(unit("Valve")->getFileName(), "Gate.OCL");
    unit("Panel")->setFileName("Desk.v2");
    EXPECT_EQ(unit("Panel")->getFileName(), "Desk.v2.ocl");
}

/// Makes a directory inaccessible while it exists, even to the administrator.
class ClosedDirectory {
  public:
    explicit ClosedDirectory(std::string path) : path_(std::move(path)) {
        ::chmod(path_.c_str(), 0555);
        if (user_ == 0) {
            EXPECT_EQ(::seteuid(65534), 0);
        }
    }
    ~ClosedDirectory() {
        EXPECT_EQ(::seteuid(user_), 0);
        ::chmod(path_.c_str(), 0755);
    }
    ClosedDirectory(const ClosedDirectory &) = delete;
    ClosedDirectory &operator=(const ClosedDirectory &) = delete;

  private:
    std::string path_;
    uid_t user_ = ::geteuid();
};

TEST_F(Rename, AFileThatTheSystemDoesNotRenameKeepsItsName) {
    IUnit *const valve = unit("Valve");
    ::chmod(directory.c_str(), 0755);
    {
        const ClosedDirectory closed(path("Pump_ory"));
        valve->setFileName("Gate");
    }
    EXPECT_EQ(valve->getFileName(), "Valve.ocl");
    EXPECT_EQ(IUnit::getByFile(unitFile("Valve.ocl")), valve);
    EXPECT_THAT(messages, testing::ElementsAre(HasSubstr("can't be renamed")));
    EXPECT_FALSE(unit("Drives")->isModified());
}

TEST_F(Rename, IsNotApprovedForATakenOrAHostileName) {
    EXPECT_FALSE(unit("Valve")->approveCMRename("Panel"));
    EXPECT_FALSE(unit("Valve")->approveCMRename("a$b"));
    EXPECT_TRUE(unit("Valve")->approveCMRename("Valve.ocl"));
    unit("Valve")->setFileName("a`b");
    EXPECT_EQ(unit("Valve")->getFileName(), "Valve.ocl");
    EXPECT_EQ(messages.size(), 1U);
}

TEST_F(Rename, AnotherUnitsFileIsNotTaken) {
    const std::string panel = read(unitFile("Panel.ocl"));
    unit("Valve")->setFileName("Panel");
    EXPECT_EQ(unit("Valve")->getFileName(), "Valve.ocl");
    EXPECT_THAT(messages, testing::ElementsAre(HasSubstr("that file belongs to the unit 'Panel'")));
    std::filesystem::remove(unitFile("Panel.ocl"));
    unit("Valve")->setFileName("Panel");
    EXPECT_EQ(unit("Valve")->getFileName(), "Valve.ocl") << "Panel may be saved again";
    EXPECT_TRUE(std::filesystem::exists(unitFile("Valve.ocl")));
}

TEST_F(Rename, AFileThatNoUnitHasIsNotTakenEither) {
    write(unitFile("Gate.ocl"), "mine");
    EXPECT_FALSE(unit("Valve")->approveCMRename("Gate"));
    unit("Valve")->setFileName("Gate");
    EXPECT_EQ(unit("Valve")->getFileName(), "Valve.ocl");
    EXPECT_EQ(read(unitFile("Gate.ocl")), "mine");
    EXPECT_THAT(messages, testing::ElementsAre(HasSubstr("the file already exists")));
}

TEST_F(Rename, AReadOnlyFileFollowsToo) {
    IUnit *const valve = unit("Valve");
    ::chmod(unitFile("Valve.ocl").c_str(), 0444);
    valve->updateMode("");
    EXPECT_TRUE(valve->approveCMRename("Gate"));
    valve->setFileName("Gate");
    EXPECT_EQ(valve->getFileName(), "Gate.ocl");
    EXPECT_TRUE(std::filesystem::exists(unitFile("Gate.ocl")));
    EXPECT_FALSE(std::filesystem::exists(unitFile("Valve.ocl")));
    EXPECT_TRUE(valve->isReadOnly());
}

TEST_F(Rename, IsNotApprovedForAStubOrAFileOfAnotherProject) {
    element(unit("Valve")).set(orchard::UnitElement::reference, true);
    EXPECT_FALSE(unit("Valve")->approveCMRename("Gate"));
    ASSERT_TRUE(orchard::setUnitLoaded(*unit("Sensors"), false).empty());
    EXPECT_FALSE(unit("Sensors")->approveCMRename("Gauges"));
}

TEST_F(Rename, AFileThatAToolHasRenamedIsFollowed) {
    std::filesystem::rename(unitFile("Valve.ocl"), unitFile("Gate.ocl"));
    EXPECT_TRUE(unit("Valve")->approveCMRename("Gate"));
    unit("Valve")->setFileName("Gate");
    EXPECT_EQ(unit("Valve")->getFileName(), "Gate.ocl");
    EXPECT_TRUE(messages.empty());
}

TEST_F(Rename, TheProjectUnitKeepsItsName) {
    EXPECT_FALSE(project->approveCMRename("Other"));
    project->setFileName("Other");
    EXPECT_EQ(project->getFileName(), "Pump.ory");
    EXPECT_TRUE(std::filesystem::exists(unitFile("Pump.ory")));
    EXPECT_THAT(messages, testing::ElementsAre(HasSubstr("its name comes from the project file")));
}

TEST_F(Rename, ADirectoryThatLeadsElsewhereIsRefused) {
    for (const char *const place : {"/tmp", "../out", "a/$b", "a/../b"}) {
        unit("Control")->setMYpersAs(place);
        EXPECT_EQ(unit("AlarmList")->getFullFileName(), unitFile("Control/AlarmList.ocl").c_str());
    }
    EXPECT_EQ(messages.size(), 4U);
    EXPECT_FALSE(project->isModified());
}

TEST_F(Rename, ADirectoryMovesWithAllBelow) {
    unit("Control")->setMYpersAs("Logic");
    EXPECT_EQ(unit("AlarmList")->getFullFileName(), path("Pump_ory/Logic/AlarmList.ocl"));
    EXPECT_EQ(IUnit::getByFile("Logic/AlarmList.ocl"), unit("AlarmList"));
    EXPECT_EQ(IUnit::getByFile("Control/AlarmList.ocl"), nullptr);
}

} // namespace
