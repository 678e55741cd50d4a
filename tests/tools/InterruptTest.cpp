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
    EXPECT_EQ(ran.json()["items"][0]["outcome"], "failed");
    EXPECT_EQ(ran.json()["items"][1]["outcome"], "not begun");
    EXPECT_EQ(project.onProject({"list"}).exit, 0);
}

TEST(Interrupt, SumsUpTheUnitsThatAreLeftAndTheSameCommandDoesThem) {
    tools::RcsProject project;
    const fs::path marker = project.directory() / "started";
    project.replaceProgram("co", "if [ -e " + tools::quoted(marker.string()) +
                                     " ]; then exec /usr/bin/co \"$@\"; fi; echo >" +
                                     tools::quoted(marker.string()) + "; sleep 1000");
    const std::vector<std::string> words{
        "-p", project.projectFile().string(), "checkout", "--lock", "--recursive", "station"};
    const pid_t pid = project.start(words);
    ASSERT_TRUE(appears(marker));
    kill(pid, SIGINT);
    const Ran ran = project.finish(pid);
    EXPECT_EQ(ran.exit, 130);
    EXPECT_EQ(std::count(ran.out.begin(), ran.out.end(), '\n'), 2) << ran.out;
    EXPECT_THAT(ran.out, testing::ContainsRegex("\nControl and [0-9]+ others: not begun; run the same command "
                                                "again to do the rest\n$"));
    EXPECT_LT(std::count(ran.err.begin(), ran.err.end(), '\n'), 8) << ran.err;
    EXPECT_THAT(ran.err, testing::Not(HasSubstr("reported an error")));

    const Ran again = project.cm(words);
    EXPECT_EQ(again.exit, 0) << again.out << again.err;
    EXPECT_THAT(project.locksOf(project.fileOf("Pump")), HasSubstr("anna: 1.1"));
}

TEST(Interrupt, OfTheTimeLimitEndsTheCommandToo) {
    tools::RcsProject project;
    project.lockProject();
    const fs::path marker = project.directory() / "started";
    const std::string slow = "echo >>" + tools::quoted(marker.string()) + "; sleep 1000";
    project.replaceProgram("co", slow);
    ASSERT_EQ(project.onProject({"property", "set", "CMChildThreadTimeOut", "300"}).exit, 0);
    const Ran ran = project.onProject({"--json", "checkout", "Pump", "Valve", "Control"});
    EXPECT_EQ(ran.exit, 1) << ran.out << ran.err;
    const std::string started = tools::Workplace::read(marker);
    EXPECT_EQ(std::count(started.begin(), started.end(), '\n'), 1) << "the limit counts once";
    EXPECT_EQ(ran.json()["items"][0]["outcome"], "failed");
    EXPECT_EQ(ran.json()["items"][1]["outcome"], "not begun");
    EXPECT_EQ(ran.json()["items"][2]["outcome"], "not begun");
}

TEST(Interrupt, OfTheTimeLimitDoesNotConcernTheNextLineOfABatch) {
    tools::RcsProject project;
    project.lockProject();
    const fs::path marker = project.directory() / "started";
    project.replaceProgram("co", "if [ -e " + tools::quoted(marker.string()) +
                                     " ]; then exec /usr/bin/co \"$@\"; fi; echo >" +
                                     tools::quoted(marker.string()) + "; sleep 1000");
    ASSERT_EQ(project.onProject({"property", "set", "CMChildThreadTimeOut", "2000"}).exit, 0);
    const fs::path batch = project.directory() / "batch";
    tools::Workplace::write(batch, "checkout Pump\ncheckout Valve\n");
    const Ran ran = project.onProject({"batch", "--keep-going", batch.string()});
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(ran.out, HasSubstr("Drives/Pump: failed"));
    EXPECT_THAT(ran.out, HasSubstr("Drives/Valve: checked out"));
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
