// Tests programs that work on one project at the same time.
#include "tests/tools/DailyCycle.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sys/stat.h>
#include <thread>

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using tools::quoted;
using tools::Ran;

namespace {

struct TwoPrograms : tools::DailyCycle {
    TwoPrograms() { project.lockProject(); }

    pid_t begin(std::vector<std::string> words) {
        words.insert(words.begin(), {"-p", project.projectFile().string(), "--json"});
        return project.start(words);
    }
    std::string value(const std::string &key) { return run({"property", "get", key}).json().value("value", ""); }

    static bool appears(const fs::path &file) {
        for (int i = 0; i < 1000 && !fs::exists(file); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return fs::exists(file);
    }
    /// Has the tool's program wait: it makes the file "begun" and ends when "end" appears.
    void delay(const std::string &program) {
        project.replaceProgram(program, "touch " + quoted(begun.string()) + "; while [ ! -e " +
                                            quoted(end.string()) + " ]; do sleep 0.05; done; exec /usr/bin/" +
                                            program + " \"$@\"");
    }
    /// Returns how often two programs are started at once: few times, or as the environment requests.
    static int rounds() {
        const char *const requested = std::getenv("ORCHARD_RACE_ROUNDS");
        return requested == nullptr ? 8 : std::atoi(requested);
    }

    const fs::path begun = project.directory() / "begun";
    const fs::path end = project.directory() / "end";
};

} // namespace

TEST_F(TwoPrograms, LoseNoPropertyThatBothSetAtOnce) {
    const char *const keys[] = {"First", "Second"};
    for (int round = 1; round <= rounds(); ++round) {
        const std::string number = std::to_string(round);
        std::vector<pid_t> programs;
        for (const char *const key : keys) {
            programs.push_back(begin({"property", "set", "--metaclass", "RCS", key, number}));
        }
        for (const pid_t program : programs) {
            const Ran ran = project.finish(program);
            EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
        }
        for (const char *const key : keys) {
            ASSERT_EQ(value(key), number) << "lost in round " << round;
        }
    }
}

TEST_F(TwoPrograms, LoseNoUnitThatBothRenameAtOnce) {
    lock("Drives");
    lock("Pump");
    lock("Valve");
    std::string pumpName = "Pump";
    std::string valveName = "Valve";
    for (int round = 1; round <= rounds(); ++round) {
        const std::string number = std::to_string(round);
        const pid_t one = begin({"rename", "--no-tool", pumpName, "Pump" + number});
        const pid_t other = begin({"rename", "--no-tool", valveName, "Valve" + number});
        for (const pid_t program : {one, other}) {
            const Ran ran = project.finish(program);
            EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
        }
        pumpName = "Pump" + number;
        valveName = "Valve" + number;
        ASSERT_EQ(run({"show", pumpName}).exit, 0) << "lost in round " << round;
        ASSERT_EQ(run({"show", valveName}).exit, 0) << "lost in round " << round;
    }
}

TEST_F(TwoPrograms, WaitForEachOtherAndNameWhoHoldsTheProject) {
    delay("co");
    const pid_t first = begin({"--no", "undo", "Pump"});
    ASSERT_TRUE(appears(begun));

    const Ran second = run({"--wait", "0", "property", "set", "--metaclass", "RCS", "Key", "value"});
    EXPECT_EQ(second.exit, 1);
    EXPECT_THAT(errorOf(second),
                AllOf(HasSubstr("another program is changing the project: process " + std::to_string(first)),
                      HasSubstr("orchard-cm"), HasSubstr("undo Pump")));
    EXPECT_THAT(second.json()["error"].value("hint", ""), HasSubstr("--wait SECONDS"));
    EXPECT_EQ(value("Key"), "");

    const pid_t third = begin({"property", "set", "--metaclass", "RCS", "Key", "value"});
    project.write(end, "");
    EXPECT_EQ(project.finish(first).exit, 0);
    EXPECT_EQ(project.finish(third).exit, 0);
    EXPECT_EQ(value("Key"), "value");
}

TEST_F(TwoPrograms, ReadWhileAnotherOneChanges) {
    delay("co");
    const pid_t first = begin({"undo", "Pump"});
    ASSERT_TRUE(appears(begun));
    EXPECT_EQ(run({"--wait", "0", "list"}).exit, 0);
    EXPECT_EQ(run({"--wait", "0", "history", "Pump"}).exit, 0);
    EXPECT_EQ(run({"--wait", "0", "property", "get", "CheckOut"}).exit, 0);
    EXPECT_EQ(run({"--wait", "0", "tool"}).exit, 0);
    project.write(end, "");
    EXPECT_EQ(project.finish(first).exit, 0);
}

TEST_F(TwoPrograms, CheckDifferentUnitsInSideBySide) {
    lock("Pump");
    lock("Valve");
    delay("ci");
    const pid_t first = begin({"checkin", "--log", "one", "Pump"});
    ASSERT_TRUE(appears(begun));
    fs::remove(begun);
    const pid_t second = begin({"--wait", "0", "checkin", "--log", "two", "Valve"});
    EXPECT_TRUE(appears(begun)) << "the second tool must run while the first does";
    const Ran sameUnit = run({"--wait", "0", "checkin", "--log", "three", "Pump"});
    EXPECT_EQ(sameUnit.exit, 1);
    EXPECT_THAT(errorOf(sameUnit), HasSubstr("checkin --log one Pump"));
    const Ran whole = run({"--wait", "0", "property", "set", "--metaclass", "RCS", "Key", "value"});
    EXPECT_EQ(whole.exit, 1);
    project.write(end, "");
    EXPECT_EQ(project.finish(first).exit, 0);
    EXPECT_EQ(project.finish(second).exit, 0);
}

TEST_F(TwoPrograms, AreFreeOfALockWhoseProgramWasKilled) {
    delay("co");
    const pid_t first = begin({"undo", "Pump"});
    ASSERT_TRUE(appears(begun));
    kill(first, SIGKILL);
    project.finish(first);
    const Ran second = run({"--wait", "0", "property", "set", "--metaclass", "RCS", "Key", "value"});
    EXPECT_EQ(second.exit, 0) << second.out << second.err;
    project.write(end, ""); // for the tool, which lives on
}

TEST_F(TwoPrograms, StopWaitingAtAnInterrupt) {
    delay("co");
    const pid_t first = begin({"undo", "Pump"});
    ASSERT_TRUE(appears(begun));
    const pid_t second = begin({"--wait", "1000", "property", "set", "--metaclass", "RCS", "Key", "value"});
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    kill(second, SIGINT);
    EXPECT_EQ(project.finish(second).exit, 130);
    project.write(end, "");
    EXPECT_EQ(project.finish(first).exit, 0);
}

TEST_F(TwoPrograms, GoOnWithAWarningWhereTheProjectCannotBeLocked) {
    const fs::path lockFile = project.projectFile().string() + ".lock";
    fs::remove(lockFile);
    fs::create_symlink("nowhere", lockFile);
    const Ran ran = run({"property", "set", "--metaclass", "RCS", "Key", "value"});
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(ran.json()["messages"][0].value("kind", ""), "warning");
    EXPECT_THAT(ran.json()["messages"][0].value("text", ""), HasSubstr("the project can't be locked"));
    EXPECT_EQ(value("Key"), "value");
    EXPECT_TRUE(fs::is_symlink(lockFile));
}

TEST_F(TwoPrograms, SeeInABatchWhatTheOtherOneChanged) {
    const fs::path lines = project.directory() / "lines";
    ASSERT_EQ(mkfifo(lines.c_str(), 0600), 0);
    const pid_t batch = begin({"batch", lines.string()});
    std::ofstream stream(lines);
    stream << "property set --metaclass RCS First 1\n" << std::flush;
    while (value("First") != "1") {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    ASSERT_EQ(run({"property", "set", "--metaclass", "RCS", "Second", "2"}).exit, 0);
    stream << "property set --metaclass RCS Third 3\n" << std::flush;
    stream.close();
    const Ran ran = project.finish(batch);
    EXPECT_EQ(ran.exit, 0) << ran.out << ran.err;
    EXPECT_EQ(value("First"), "1");
    EXPECT_EQ(value("Second"), "2");
    EXPECT_EQ(value("Third"), "3");
}
