// Tests the listing of a workspace on disk whose project hides a subsystem from the CM tool.
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/host/IProject.h"
#include "orchard/storage/NewProject.h"
#include "orchard/storage/Projects.h"
#include "tests/support/TemporaryDirectory.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

using testing::Contains;

namespace {

class ListingOnDisk : public testing::Test {
  protected:
    ListingOnDisk() { EXPECT_EQ(orchard::createSampleProject(directory_ / "Pump").error, ""); }
    ~ListingOnDisk() override { orchard::closeAllProjects(); }
    void hide(const std::string &file) {
        const std::string path = directory_ / ("Pump_ory/" + file);
        std::ifstream stream(path, std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(stream), {}};
        const std::string before = "</name>";
        text.insert(text.find(before) + before.size(), "<hidden-from-cm>yes</hidden-from-cm>");
        std::ofstream(path, std::ios::binary) << text;
    }
    std::vector<std::string> listed() {
        orchard::closeAllProjects();
        EXPECT_NE(orchard::openProject(directory_ / "Pump.orp").project, nullptr);
        CMUnitList units;
        CMArgumentList args;
        CMDiagnosticList diags;
        EXPECT_EQ(CMFacade::ListWorkspace(units, args, diags), 1);
        std::vector<std::string> files;
        for (const IUnit *const unit : units) {
            files.push_back(unit->getFileName().str());
        }
        return files;
    }

  private:
    const support::TemporaryDirectory directory_;
};

TEST_F(ListingOnDisk, LeavesAHiddenSubsystemOutButNotItsUnits) {
    std::vector<std::string> expected = listed();
    ASSERT_THAT(expected, Contains("Drives.osb"));
    ASSERT_THAT(expected, Contains("Valve.ocl"));
    hide("Drives.osb");
    std::erase(expected, "Drives.osb");
    EXPECT_EQ(listed(), expected);
}

} // namespace
