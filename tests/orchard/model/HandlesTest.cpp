#include "tests/orchard/storage/Workbench.h"

#include "CM/host/Reload.h"

namespace {

class Handles : public Workbench {
  protected:
    void SetUp() override { openSample(); }
};

TEST_F(Handles, GoOnToTheObjectThatAReloadPutsInThePlace) {
    IUnit *const valve = unit("Valve");
    IHandle *const handle = valve->getHandle();
    edit(unitFile("Valve.ocl"), "</class>",
         "<attribute id=\"00000000-0000-0000-0000-0000000000aa\"><name>new</name></attribute></class>");
    QuickATMFacade scope(nullptr, nullptr, nullptr, nullptr);
    IUnit *const fresh = scope.reloadUnit(valve, 0, 0);
    ASSERT_NE(fresh, nullptr);
    EXPECT_NE(fresh, valve);
    EXPECT_EQ(handle->doGetObject(), fresh);
    EXPECT_EQ(handle->doGetSafeObject(), fresh);
    handle->release();
}

TEST_F(Handles, AnswerNullWhenTheObjectIsGoneAndComeBackWithIt) {
    IHandle *const handle = unit("Valve")->getHandle();
    const std::string drives = read(unitFile("Drives.osb"));
    std::string without = drives;
    const std::size_t line = without.rfind("  <unit", without.find("Valve.ocl"));
    without.erase(line, without.find('\n', line) + 1 - line);
    write(unitFile("Drives.osb"), without);
    QuickATMFacade scope(nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(scope.reloadUnit(unit("Drives"), 0, 0), nullptr);
    EXPECT_EQ(handle->doGetObject(), nullptr);
    write(unitFile("Drives.osb"), drives);
    ASSERT_NE(scope.reloadUnit(unit("Drives"), 0, 0), nullptr);
    EXPECT_EQ(handle->doGetObject(), unit("Valve"));
    handle->release();
}

TEST_F(Handles, AnswerNullAfterTheModelIsClosed) {
    IHandle *const first = unit("Valve")->getHandle();
    IHandle *const second = unit("Valve")->getHandle();
    EXPECT_EQ(first->doGetObject(), unit("Valve"));
    first->release();
    orchard::closeAllProjects();
    EXPECT_EQ(second->doGetObject(), nullptr);
    second->release();
}

TEST_F(Handles, ThereIsNoneToAnElementOutsideAModel) {
    EXPECT_EQ(CurrentWorkspace::Workspace()->getWorkspace()->getHandle(), nullptr);
}

} // namespace
