// Tests tools that misbehave: the program survives and reports what happened, and the model stays intact.
#include "tests/tools/RcsProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace fs = std::filesystem;
using testing::HasSubstr;
using tools::Ran;

namespace {

struct ToolTrouble : testing::Test {
    tools::RcsProject project;
    fs::path pump = project.fileOf("Pump");
    std::string before = tools::Workplace::read(pump);

    Ran checkout(const std::string &unit = "Pump") { return project.onProject({"--json", "checkout", unit}); }
    static std::string reason(const Ran &ran) { return ran.json()["items"][0].value("reason", ""); }

    /// The model can be read, and holds the unit as it was.
    void expectSoundModel() {
        const Ran list = project.onProject({"list"});
        EXPECT_EQ(list.exit, 0) << list.err;
        EXPECT_EQ(tools::Workplace::read(pump), before);
        EXPECT_EQ(project.show("Pump")["description"], "One pump with its motor protection.");
    }
};

} // namespace

TEST_F(ToolTrouble, NotInstalled) {
    project.setEnvironment("PATH", "/nowhere");
    const Ran ran = checkout();
    EXPECT_EQ(ran.exit, 1) << ran.out << ran.err;
    EXPECT_THAT(reason(ran), testing::AnyOf(HasSubstr("not installed"), HasSubstr("could not be started")));
    expectSoundModel();
}

TEST_F(ToolTrouble, HangsUntilItsTimeLimit) {
    project.lockProject();
    ASSERT_EQ(project.onProject({"property", "set", "CMChildThreadTimeOut", "300", "--metaclass", "RCS"}).exit, 0);
    const fs::path helper = project.directory() / "helper";
    project.replaceProgram("co", "sleep 1000 & echo $! > " + tools::quoted(helper.string()) + "; wait");
    const auto start = std::chrono::steady_clock::now();
    const Ran ran = checkout();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(reason(ran), HasSubstr("time limit"));
    const auto started = static_cast<pid_t>(std::stol(tools::Workplace::read(helper)));
    EXPECT_TRUE(tools::Workplace::endsSoon(started)) << "what the tool had started was left running";
    expectSoundModel();
}

TEST_F(ToolTrouble, FloodsBothChannels) {
    project.replaceProgram("co",
                           "yes outputoutputoutput | head -c 20000000; yes errors | head -c 20000000 >&2; exit 1");
    const Ran ran = checkout();
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(reason(ran), HasSubstr("exit status 1"));
    expectSoundModel();
}

TEST_F(ToolTrouble, DiesOfASignal) {
    project.replaceProgram("co", "kill -SEGV $$");
    const Ran ran = checkout();
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(reason(ran), HasSubstr("signal 11"));
    expectSoundModel();
}

TEST_F(ToolTrouble, WritesBytesThatAreNoUtf8) {
    project.replaceProgram("co", R"(printf 'a\377\376b\n'; printf '\303\050 broken\n' >&2)");
    const Ran ran = checkout();
    ASSERT_FALSE(ran.json().is_discarded()) << ran.out;
    EXPECT_THAT(ran.json()["window"].get<std::string>(), HasSubstr("broken"));
    EXPECT_EQ(project.onProject({"checkout", "Pump"}).exit, ran.exit);
    expectSoundModel();
}

TEST_F(ToolTrouble, RemovesTheFile) {
    project.replaceProgram("co", "rm -f " + tools::quoted(pump.string()));
    const Ran ran = project.onProject({"batch", "--keep-going"}, "checkout Pump\nshow Pump\nlist\n");
    EXPECT_EQ(ran.exit, 1);
    EXPECT_FALSE(fs::exists(pump));
    EXPECT_THAT(ran.out, HasSubstr("Drives/Pump: failed: "));
    EXPECT_THAT(ran.out, HasSubstr("One pump with its motor protection.")) << "the loaded unit is lost";
    EXPECT_EQ(project.onProject({"list"}).exit, 0);
}

TEST_F(ToolTrouble, WritesAFileOfSomethingElse) {
    project.replaceProgram("co", "chmod u+w " + tools::quoted(pump.string()) + "; head -c 100000 /dev/urandom > " +
                                     tools::quoted(pump.string()));
    const Ran ran = project.onProject({"batch", "--keep-going"}, "checkout Pump\nshow Pump\n");
    EXPECT_EQ(ran.exit, 1);
    EXPECT_THAT(ran.out, HasSubstr("One pump with its motor protection."));
    EXPECT_THAT(ran.err, HasSubstr(pump.filename().string()));
}

TEST_F(ToolTrouble, PrintsAnErrorAndEndsWell) {
    project.replaceProgram("co", "echo 'co: " + pump.filename().string() + ": cannot lock it' >&2");
    const Ran ran = checkout();
    EXPECT_EQ(ran.exit, 1) << "the text matches the tool's error pattern: " << ran.out;
    expectSoundModel();
}
