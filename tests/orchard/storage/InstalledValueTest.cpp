// A process reads its property sets once, so this test is a separate program.
#include "tests/orchard/storage/Workbench.h"

#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyTable.h"

namespace {

class InstalledValue : public Workbench {
  protected:
    InstalledValue() {
        write(path("share/toolsets/all.toml"),
              "[ConfigurationManagement.CMGeneral]\nRepository = '$ArchivePath'\n");
        ::setenv("ORCHARD_SHARE", path("share").c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", path("none").c_str(), 1);
    }
    [[nodiscard]] IProperty *repository() const {
        return project->findProperty("ConfigurationManagement", "CMGeneral", "Repository", IProperty::inherited);
    }
};

TEST_F(InstalledValue, ThatIsSetIsKeptInTheActiveProject) {
    openSample();
    IProperty *const installed =
        orchard::findInstalledProperty("ConfigurationManagement", "CMGeneral", "Repository");
    ASSERT_NE(installed, nullptr);
    ASSERT_EQ(repository(), installed);
    installed->setValue("/archive");
    EXPECT_EQ(installed->getValue(), "$ArchivePath") << "all projects share it";
    EXPECT_EQ(repository()->getValue(), "/archive");
    EXPECT_TRUE(project->isModified());
    ASSERT_TRUE(orchard::saveProject(project).empty());
    reopen();
    EXPECT_EQ(repository()->getValue(), "/archive");
    orchard::closeAllProjects();
    installed->setValue("for this process");
    EXPECT_EQ(installed->getValue(), "for this process") << "there is no project to keep it";
}

} // namespace
