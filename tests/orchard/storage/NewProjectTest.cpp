#include "tests/orchard/storage/Workbench.h"

#include "orchard/storage/UnitSearch.h"

#include <map>

using testing::HasSubstr;

namespace {

class NewProject : public Workbench {
  protected:
    /// Returns all files below a directory, by name, with their contents.
    static std::map<std::string, std::string> filesIn(const std::string &root) {
        std::map<std::string, std::string> files;
        for (const auto &entry : std::filesystem::recursive_directory_iterator(root)) {
            if (entry.is_regular_file()) {
                files[std::filesystem::relative(entry.path(), root).string()] = read(entry.path().string());
            }
        }
        return files;
    }
};

TEST_F(NewProject, TheSameNumberGivesTheSameModel) {
    ASSERT_TRUE(orchard::createGeneratedProject(path("a/Plant"), 700));
    ASSERT_TRUE(orchard::createGeneratedProject(path("b/Plant"), 700));
    const auto files = filesIn(path("a"));
    EXPECT_EQ(files, filesIn(path("b")));
    EXPECT_EQ(files.size(), 702U) << "the units, the project and its file";
}

TEST_F(NewProject, HoldsAsManyUnitsAsAskedFor) {
    for (const std::size_t units : {0U, 1U, 2U, 3U, 23U, 508U}) {
        const std::string name = "N" + std::to_string(units);
        ASSERT_EQ(orchard::createGeneratedProject(path(name), units).error, "");
        open(name + ".orp");
        ASSERT_NE(project, nullptr);
        EXPECT_EQ(orchard::workspaceUnits(*project).size(), units + 1);
    }
}

TEST_F(NewProject, NeverWritesOverAnother) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump")));
    const std::string before = read(path("Pump.orp"));
    EXPECT_THAT(orchard::createSampleProject(path("Pump.orp")).error, HasSubstr("there is a project already"));
    EXPECT_EQ(read(path("Pump.orp")), before);
    std::filesystem::remove(path("Pump.orp"));
    EXPECT_THAT(orchard::createSampleProject(path("Pump")).error, HasSubstr("units exists already"));
}

TEST_F(NewProject, CanBeRepeatedAfterACrash) {
    ASSERT_TRUE(orchard::createGeneratedProject(path("a/Plant"), 30));
    std::filesystem::create_directories(path("b/Plant_ory"));
    write(path("b/Plant_ory/.unfinished"), "");
    write(path("b/Plant_ory/Plant.ocm"), "<comp");
    ASSERT_EQ(orchard::createGeneratedProject(path("b/Plant"), 30).error, "");
    EXPECT_EQ(filesIn(path("a")), filesIn(path("b")));
    std::filesystem::create_directories(path("c/Plant_ory"));
    EXPECT_EQ(orchard::createGeneratedProject(path("c/Plant"), 30).error, "") << "killed before its first file";
}

TEST_F(NewProject, RefusesANameThatATemplateCouldNotQuote) {
    EXPECT_THAT(orchard::createSampleProject(path("a$b")).error, HasSubstr("the character $"));
    EXPECT_TRUE(std::filesystem::is_empty(directory));
}

TEST_F(NewProject, TheToolIsSetOnTheProject) {
    ASSERT_TRUE(orchard::createSampleProject(path("Pump"), "RCS"));
    open();
    const IProperty *const tool =
        project->getConfiguration()->findProperty("ConfigurationManagement", "CMGeneral", "CMTool", 0);
    ASSERT_NE(tool, nullptr);
    EXPECT_EQ(tool->getValue(), "RCS");
}

} // namespace
