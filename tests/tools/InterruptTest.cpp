// Tests Ctrl-C during a check out.
#include "tests/tools/RcsProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace fs = std::filesystem;
using testing::HasSubstr;
using tools::Ran;

namespace {

bool appears(const fs::path &file) {
    for (int i = 0; i < 500 && !fs::exists(file); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return fs::exists(file);
}

} // namespace

TEST(Interrupt, EndsTheToolAndLeavesFilesWhole) {
    tools::RcsProject project;
    const fs::path pump = project.fileOf("Pump");
    const std::string before = tools::Workplace::read(pump);
    const fs::path marker = project.directory() / "started";
    project.replaceProgram("co", "echo $$ >> " + tools::quoted(marker.string()) + "; sleep 1000");

    const pid_t pid = project.start({"-p", project.projectFile().string(), "--json", "checkout", "Pump", "Valve"});
    ASSERT_TRUE(appears(marker));
    kill(pid, SIGINT);
    const Ran ran = project.finish(pid);

    EXPECT_EQ(ran.exit, 130) << ran.out << ran.err;
    EXPECT_EQ(tools::Workplace::read(pump), before);
    const std::string started = tools::Workplace::read(marker);
    EXPECT_EQ(std::count(started.begin(), started.end(), '\n'), 1) << "no tool is started after Ctrl-C";
    EXPECT_TRUE(tools::Workplace::endsSoon(static_cast<pid_t>(std::stol(started)))) << "the tool is still there";
    EXPECT_EQ(ran.json()["items"][1]["outcome"], "failed");
    EXPECT_EQ(project.onProject({"list"}).exit, 0);
}

TEST(Interrupt, EndsABatch) {
    tools::RcsProject project;
    const fs::path marker = project.directory() / "started";
    project.replaceProgram("co", "echo $$ >> " + tools::quoted(marker.string()) + "; sleep 1000");
    const fs::path batch = project.directory() / "batch";
    tools::Workplace::write(batch, "checkout Pump\nlist\n");
    const pid_t pid =
        project.start({"-p", project.projectFile().string(), "batch", "--keep-going", batch.string()});
    ASSERT_TRUE(appears(marker));
    kill(pid, SIGINT);
    const Ran ran = project.finish(pid);
    EXPECT_EQ(ran.exit, 130);
    EXPECT_THAT(ran.out, testing::Not(HasSubstr("STATE"))) << "the line behind did not run";
}
