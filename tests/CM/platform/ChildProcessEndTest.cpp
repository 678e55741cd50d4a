// Tests how children end: by themselves, at a time limit, by an interruption, and with other processes of their
// group still running.
#include "CM/platform/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <sys/time.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;
using platform::ChildOptions;
using platform::ChildResult;
using platform::runChild;
using Clock = std::chrono::steady_clock;

constexpr std::string_view child = CHILD;
constexpr auto farAway = 60s; // a child that takes this long was not ended

std::string command(std::string_view rest) { return std::string(child) + " " + std::string(rest); }

/// Returns whether a process exists and is not a zombie.
bool isAlive(const std::string &process) {
    std::ifstream stream("/proc/" + process + "/stat");
    std::string number;
    std::string name;
    std::string state;
    return stream >> number >> name >> state && state != "Z";
}

/// An orphan is reaped by another process, a moment later.
bool isGoneSoon(const std::string &process) {
    for (int count = 0; count < 200 && isAlive(process); ++count) {
        std::this_thread::sleep_for(10ms);
    }
    return !isAlive(process);
}

std::string firstLine(const std::string &text) { return text.substr(0, text.find('\n')); }

bool hasChildren() { return ::waitpid(-1, nullptr, WNOHANG) != -1 || errno != ECHILD; }

ChildOptions limited(std::chrono::milliseconds limit) {
    ChildOptions options;
    options.limit = limit;
    return options;
}

TEST(RunChildEnd, EndsAChildAtItsLimitAndKeepsWhatItWrote) {
    const auto start = Clock::now();
    const auto result = runChild(command("hang"), limited(200ms));
    EXPECT_EQ(result.end, ChildResult::End::timedOut);
    EXPECT_EQ(result.code, 0);
    ASSERT_NE(result.output, "");
    EXPECT_FALSE(isAlive(firstLine(result.output)));
    EXPECT_GE(Clock::now() - start, 200ms);
    EXPECT_LT(Clock::now() - start, farAway);
}

TEST(RunChildEnd, KillsAChildThatDoesNotEndWhenAsked) {
    const auto result = runChild(command("stubborn"), limited(200ms));
    EXPECT_EQ(result.end, ChildResult::End::timedOut);
    EXPECT_FALSE(isAlive(firstLine(result.output)));
}

TEST(RunChildEnd, EndsTheWholeGroupAtTheLimit) {
    const auto result = runChild(command("hang & ") + command("stubborn >&2"), limited(500ms));
    EXPECT_EQ(result.end, ChildResult::End::timedOut);
    ASSERT_NE(result.output, "");
    ASSERT_NE(result.errors, "");
    EXPECT_TRUE(isGoneSoon(firstLine(result.output)));
    EXPECT_TRUE(isGoneSoon(firstLine(result.errors)));
}

TEST(RunChildEnd, EndsAMemberOfTheGroupThatHoldsNoChannelAndIgnoresTheRequest) {
    const support::TemporaryDirectory directory;
    const auto file = directory / "pid";
    const auto result = runChild(command("stubborn > " + file + " 2>&1 & ") + command("hang"), limited(500ms));
    EXPECT_EQ(result.end, ChildResult::End::timedOut);
    const auto process = firstLine(support::contentsOf(file));
    ASSERT_NE(process, "");
    EXPECT_TRUE(isGoneSoon(process));
}

TEST(RunChildEnd, EndsAStoppedChild) {
    const auto result = runChild("trap 'echo asked; exit' TERM; kill -STOP $$; sleep 100", limited(200ms));
    EXPECT_EQ(result.end, ChildResult::End::timedOut);
    EXPECT_EQ(result.output, "asked\n") << "it hears the request, and isn't just killed";
    EXPECT_FALSE(hasChildren());
}

TEST(RunChildEnd, HoldsTheLimitAgainstAChildThatClosedItsChannels) {
    const auto result = runChild(command("silent 100000"), limited(200ms));
    EXPECT_EQ(result.end, ChildResult::End::timedOut);
    EXPECT_FALSE(hasChildren());
}

TEST(RunChildEnd, WaitsForAChildThatClosedItsChannels) {
    const auto result = runChild(command("silent 200"));
    EXPECT_EQ(result.end, ChildResult::End::exited);
    EXPECT_EQ(result.code, 5);
}

TEST(RunChildEnd, HoldsTheLimitAgainstAFlood) {
    const auto start = Clock::now();
    const auto result = runChild("cat /dev/zero", limited(100ms));
    EXPECT_EQ(result.end, ChildResult::End::timedOut);
    EXPECT_LT(Clock::now() - start, farAway);
}

TEST(RunChildEnd, TakesALimitOfNothingAsOver) {
    EXPECT_EQ(runChild(command("hang"), limited(0ms)).end, ChildResult::End::timedOut);
    EXPECT_EQ(runChild(command("hang"), limited(-5ms)).end, ChildResult::End::timedOut);
}

TEST(RunChildEnd, DoesNotWaitForABackgroundProcessThatHoldsTheChannels) {
    const auto start = Clock::now();
    const auto result = runChild(command("hang & exit 3"));
    EXPECT_EQ(result.end, ChildResult::End::exited) << "the command itself had ended";
    EXPECT_EQ(result.code, 3);
    EXPECT_LT(Clock::now() - start, farAway);
    ASSERT_NE(result.output, "");
    EXPECT_TRUE(isGoneSoon(firstLine(result.output)));
}

TEST(RunChildEnd, TakesWhatABackgroundProcessWritesSoonAfterTheEnd) {
    EXPECT_EQ(runChild("(sleep 0.1; " + command("both") + ") & exit 0").output, "to output\n");
}

TEST(RunChildEnd, DoesNotWaitForAProcessThatLeftTheGroupWithTheChannels) {
    const auto start = Clock::now();
    const auto result = runChild("setsid " + command("hang & exit 0"));
    EXPECT_EQ(result.end, ChildResult::End::exited);
    EXPECT_LT(Clock::now() - start, farAway);
    const auto process = firstLine(result.output);
    ASSERT_NE(process, "");
    ::kill(static_cast<pid_t>(std::stol(process)), SIGKILL);
    EXPECT_TRUE(isGoneSoon(process));
}

TEST(RunChildEnd, LeavesABackgroundProcessAloneThatHoldsNoChannel) {
    const support::TemporaryDirectory directory;
    const auto file = directory / "pid";
    // The command waits until the background process has written its id.
    const auto result =
        runChild(command("hang > " + file + " 2>&1 & while [ ! -s " + file + " ]; do sleep 0.01; done"));
    EXPECT_EQ(result.end, ChildResult::End::exited);
    const auto process = firstLine(support::contentsOf(file));
    ASSERT_NE(process, "");
    EXPECT_TRUE(isAlive(process));
    ::kill(static_cast<pid_t>(std::stol(process)), SIGKILL);
    EXPECT_TRUE(isGoneSoon(process));
}

TEST(RunChildEnd, LeavesNoUncollectedChild) {
    runChild(command("exit 1"));
    runChild(command("raise 11"));
    runChild(command("stubborn"), limited(50ms));
    runChild("no-such-tool-here");
    EXPECT_FALSE(hasChildren());
}

TEST(RunChildEnd, EndsTheGroupWhenAskedToByTheCaller) {
    int asked = 0;
    ChildOptions options;
    options.interrupted = [&asked] { return ++asked == 3; };
    const auto result = runChild(command("hang"), options);
    EXPECT_EQ(result.end, ChildResult::End::interrupted);
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(asked, 3) << "once it has said so, it isn't asked again";
    EXPECT_FALSE(isAlive(firstLine(result.output)));
}

TEST(RunChildEnd, AsksTheCallerDuringAFlood) {
    ChildOptions options;
    options.interrupted = [] { return true; };
    EXPECT_EQ(runChild("cat /dev/zero", options).end, ChildResult::End::interrupted);
}

TEST(RunChildEnd, AsksTheCallerAfterEachSignal) {
    struct sigaction action {};
    struct sigaction before {};
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, &before);
    itimerval timer{{0, 10'000}, {0, 10'000}}; // a hundred times a second
    setitimer(ITIMER_REAL, &timer, nullptr);
    int asked = 0;
    ChildOptions options = limited(1s);
    options.interrupted = [&asked] {
        ++asked;
        return false;
    };
    const auto result = runChild(command("hang"), options);
    timer = {};
    setitimer(ITIMER_REAL, &timer, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    EXPECT_EQ(result.end, ChildResult::End::timedOut);
    EXPECT_GT(asked, 20) << "without signals it is asked ten times";
}

TEST(RunChildEnd, LeavesNothingRunningWhenTheCallersQuestionThrows) {
    ChildOptions options;
    options.interrupted = []() -> bool { throw std::runtime_error("no answer"); };
    EXPECT_THROW(runChild(command("stubborn"), options), std::runtime_error);
    EXPECT_FALSE(hasChildren());
}

TEST(RunChildEnd, SurvivesACallerThatHasItsChildrenCollected) {
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    const auto result = runChild(command("both"));
    std::signal(SIGCHLD, before);
    EXPECT_EQ(result.end, ChildResult::End::exited);
    EXPECT_EQ(result.code, -1);
    EXPECT_EQ(result.output, "to output\n");
}

} // namespace
