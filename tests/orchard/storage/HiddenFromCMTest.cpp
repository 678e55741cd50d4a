// Tests how the file of a subsystem records that the subsystem is hidden from the CM tool.
#include "tests/orchard/storage/Workbench.h"

#include "CM/host/Reload.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class HiddenFromCM : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    void hideInFile(std::string_view more = "") {
        edit(unitFile("Drives.osb"), "</name>",
             "</name>\n  <hidden-from-cm>yes</hidden-from-cm>" + std::string(more));
    }
    [[nodiscard]] bool isHidden(std::string_view name) const {
        const auto *const subsystem = dynamic_cast<const ISubsystem *>(unit(name));
        EXPECT_NE(subsystem, nullptr) << name;
        return subsystem != nullptr && subsystem->isHiddenFromCM();
    }
    static void reload(IUnit *unit) {
        EXPECT_EQ(QuickATMFacade(nullptr, nullptr, nullptr, nullptr).reloadUnit(unit, 0, 0), unit);
    }
};

TEST_F(HiddenFromCM, IsReadFromTheSubsystemsFile) {
    EXPECT_FALSE(isHidden("Drives"));
    hideInFile();
    reopen();
    EXPECT_TRUE(isHidden("Drives"));
    EXPECT_FALSE(isHidden("Control"));
}

TEST_F(HiddenFromCM, IsNoFactOfAClass) {
    edit(unitFile("Valve.ocl"), "</name>", "</name>\n  <hidden-from-cm>yes</hidden-from-cm>");
    reopen();
    EXPECT_THAT(warnings, ElementsAre(HasSubstr("<hidden-from-cm> is not known in <class>")));
    EXPECT_TRUE(unit("Valve")->isStub());
}

TEST_F(HiddenFromCM, IsWrittenBack) {
    hideInFile();
    reopen();
    orchard::setDescription(*unit("Drives"), "changed");
    EXPECT_TRUE(orchard::saveProject(project).empty());
    EXPECT_THAT(read(unitFile("Drives.osb")), HasSubstr("changed"));
    EXPECT_THAT(read(unitFile("Drives.osb")), HasSubstr("\n  <hidden-from-cm>yes</hidden-from-cm>\n"));
    reopen();
    EXPECT_TRUE(isHidden("Drives"));
}

TEST_F(HiddenFromCM, AReloadTakesItOverEitherWay) {
    const std::string shown = read(unitFile("Drives.osb"));
    hideInFile();
    reload(unit("Drives"));
    EXPECT_TRUE(isHidden("Drives"));
    write(unitFile("Drives.osb"), shown);
    reload(unit("Drives"));
    EXPECT_FALSE(isHidden("Drives"));
}

TEST_F(HiddenFromCM, AFileThatIsRefusedLeavesItUnset) {
    hideInFile("<batch-archive odd=\"1\">/archive</batch-archive>");
    reopen();
    EXPECT_THAT(warnings, ElementsAre(HasSubstr("odd")));
    EXPECT_TRUE(unit("Drives")->isStub());
    EXPECT_FALSE(isHidden("Drives"));
}

} // namespace
