#include "orchard/remembered/ListWorkspace.h"

#include "CM/host/IProject.h"
#include "orchard/storage/UnitSearch.h"
#include "tests/orchard/storage/Workbench.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <thread>

namespace fs = std::filesystem;
using testing::SizeIs;

namespace {

/// A large and a small project, which all tests share: files that are younger than two seconds are not trusted.
class ListWorkspace : public Workbench {
  protected:
    static void SetUpTestSuite() {
        shared = place.emplace().path();
        ASSERT_TRUE(orchard::createGeneratedProject(shared + "/Pump", 1000));
        ASSERT_EQ(orchard::createSampleProject(shared + "/Small").error, "");
        std::this_thread::sleep_for(std::chrono::milliseconds(2100));
    }
    static void TearDownTestSuite() { place.reset(); }

    ListWorkspace() { ::setenv("XDG_CACHE_HOME", path("cache").c_str(), 1); }
    ~ListWorkspace() override { ::unsetenv("XDG_CACHE_HOME"); }

    std::vector<std::string> list(const std::string &name = "Pump.orp") {
        const std::string file = shared + "/" + name;
        orchard::ListOptions options;
        options.open = [&]() -> IProject & {
            ++openings;
            return *orchard::openProject(file).project;
        };
        options.areRowsInFiles = [this] { return rowsInFiles; };
        std::vector<std::string> rows;
        orchard::listWorkspace(file, options, [&](const orchard::UnitRow &row) {
            rows.push_back(row.path + "|" + row.file + "|" + orchard::unitStateText(row.state));
        });
        return rows;
    }

    static inline std::optional<support::TemporaryDirectory> place;
    static inline std::string shared;
    int openings = 0;
    bool rowsInFiles = true;
};

TEST_F(ListWorkspace, OpensALargeProjectOnceOnly) {
    const std::vector<std::string> rows = list();
    EXPECT_THAT(rows, SizeIs(1001));
    EXPECT_EQ(openings, 1);
    orchard::closeAllProjects();
    EXPECT_EQ(list(), rows);
    EXPECT_EQ(openings, 1);
    EXPECT_TRUE(orchard::openProjects().empty());
}

TEST_F(ListWorkspace, OfAProjectThatIsOpenListsTheModelAndKeepsNothing) {
    ASSERT_TRUE(orchard::openProject(shared + "/Pump.orp"));
    EXPECT_THAT(list(), SizeIs(1001));
    orchard::closeAllProjects();
    EXPECT_THAT(list(), SizeIs(1001));
    EXPECT_EQ(openings, 2);
}

TEST_F(ListWorkspace, OfRowsThatAreNotInFilesUsesAndKeepsNothing) {
    rowsInFiles = false;
    list();
    orchard::closeAllProjects();
    rowsInFiles = true;
    list(); // keeps them
    orchard::closeAllProjects();
    rowsInFiles = false;
    EXPECT_THAT(list(), SizeIs(1001));
    EXPECT_EQ(openings, 3);
}

TEST_F(ListWorkspace, OfASmallProjectKeepsNothing) {
    EXPECT_THAT(list("Small.orp"), SizeIs(17));
    EXPECT_FALSE(fs::exists(path("cache")));
}

} // namespace
