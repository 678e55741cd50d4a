// Tests the environment of a child at its start, and how its output is returned.
#include "CM/platform/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using platform::ChildOptions;
using platform::ChildResult;
using platform::runChild;
using testing::HasSubstr;

constexpr std::string_view child = CHILD;

std::string command(std::string_view rest) { return std::string(child) + " " + std::string(rest); }

int openDescriptors() {
    int count = 0;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        static_cast<void>(entry);
        ++count;
    }
    return count;
}

TEST(RunChild, CollectsBothChannelsApart) {
    const auto result = runChild(command("both"));
    EXPECT_EQ(result.end, ChildResult::End::exited);
    EXPECT_EQ(result.output, "to output\n");
    EXPECT_EQ(result.errors, "to errors\n");
}

TEST(RunChild, GivesTheExitStatus) {
    const auto result = runChild(command("exit 7"));
    EXPECT_EQ(result.end, ChildResult::End::exited);
    EXPECT_EQ(result.code, 7);
}

TEST(RunChild, TellsTheSignalThatKilledTheChild) {
    const auto result = runChild(command("raise 9"));
    EXPECT_EQ(result.end, ChildResult::End::killedBySignal);
    EXPECT_EQ(result.code, SIGKILL);
}

TEST(RunChild, HandsQuotedWordsOnAsOneArgument) {
    EXPECT_EQ(runChild(command(R"(arguments "a b" 'c  d' "")")).output, "<a b>\n<c  d>\n<>\n");
}

TEST(RunChild, UsesAShellWhereTheCommandNeedsOne) {
    EXPECT_EQ(runChild(command("exit 3 || " + command("arguments $((6*7))"))).output, "<42>\n");
}

TEST(RunChild, FindsAProgramByThePath) {
    const auto result = runChild("cat /dev/null");
    EXPECT_EQ(result.end, ChildResult::End::exited);
    EXPECT_EQ(result.code, 0);
}

TEST(RunChild, TellsThatAProgramIsNotThere) {
    const auto result = runChild("no-such-tool-here -x");
    EXPECT_EQ(result.end, ChildResult::End::notStarted);
    EXPECT_EQ(result.code, ENOENT);
    EXPECT_EQ(result.errors, "");
}

TEST(RunChild, TellsThatAFileIsNoProgram) {
    const support::TemporaryDirectory directory;
    const auto result = runChild(directory.write("text", "hello"));
    EXPECT_EQ(result.end, ChildResult::End::notStarted);
    EXPECT_EQ(result.code, EACCES);
}

TEST(RunChild, LetsTheShellSayThatAProgramIsNotThere) {
    const auto result = runChild("no-such-tool-here; exit 4");
    EXPECT_EQ(result.end, ChildResult::End::exited);
    EXPECT_EQ(result.code, 4);
    EXPECT_THAT(result.errors, HasSubstr("no-such-tool-here"));
}

TEST(RunChild, RunsAScriptThatNamesNoInterpreterAsAShellDoes) {
    const support::TemporaryDirectory directory;
    const auto script = directory.write("script", "echo \"got $1\"\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    EXPECT_EQ(runChild(script + " 'a b'").output, "got a b\n");
}

TEST(RunChild, ReadsACommandThatStartsWithADashAsACommand) {
    const auto result = runChild("-c; exit 6");
    EXPECT_EQ(result.code, 6);
    EXPECT_THAT(result.errors, HasSubstr("-c"));
}

TEST(RunChild, DoesNotStartTheFirstHalfOfACommandWithANul) {
    const support::TemporaryDirectory directory;
    const auto made = directory / "made";
    const auto result = runChild("touch " + made + std::string(1, '\0') + ".osb");
    EXPECT_EQ(result.end, ChildResult::End::notStarted);
    EXPECT_EQ(result.code, EINVAL);
    EXPECT_FALSE(std::filesystem::exists(made));
}

TEST(RunChild, EndsAnEmptyCommandWell) {
    const auto result = runChild("");
    EXPECT_EQ(result.end, ChildResult::End::exited);
    EXPECT_EQ(result.code, 0);
}

TEST(RunChild, TakesFloodsOnBothChannelsWhole) {
    const auto result = runChild(command("flood 24"));
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.output.size(), 24U << 20U);
    EXPECT_EQ(result.errors.size(), 24U << 20U);
    EXPECT_EQ(result.output.find_first_not_of('o'), std::string::npos);
    EXPECT_EQ(result.errors.find_first_not_of('e'), std::string::npos);
}

TEST(RunChild, KeepsBytesAsTheyAre) {
    EXPECT_EQ(runChild(command("bytes")).output, std::string("\xff\0\xfe\n", 4));
}

TEST(RunChild, SendsTheOutputToAnOpenFileAndStillCollectsTheErrors) {
    const support::TemporaryDirectory directory;
    const auto target = directory / "target";
    const int descriptor = ::open(target.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_GE(descriptor, 0);
    ChildOptions options;
    options.outputDescriptor = descriptor;
    const auto result = runChild(command("both"), options);
    EXPECT_EQ(::close(descriptor), 0) << "the descriptor stays the caller's";
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "to errors\n");
    EXPECT_EQ(support::contentsOf(target), "to output\n");
}

TEST(RunChild, GivesTheChildAnEmptyInputAndAGroupOfItsOwnWithoutATerminal) {
    const auto output = runChild(command("surroundings")).output;
    EXPECT_THAT(output, HasSubstr("input=0\n"));
    EXPECT_THAT(output, HasSubstr("group=1\n"));
    EXPECT_THAT(output, HasSubstr("terminal=0\n"));
}

/// What a child finds whose parent has a terminal (or has none).
std::string surroundingsBelow(bool terminal) {
    const support::TemporaryDirectory directory;
    const auto answer = directory / "answer";
    int master = -1;
    const pid_t parent = terminal ? ::forkpty(&master, nullptr, nullptr, nullptr) : ::fork();
    if (parent == 0) {
        if (!terminal) {
            ::setsid();
        }
        std::ofstream(answer.c_str()) << runChild(command("surroundings")).output;
        ::_exit(0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(parent, &status, 0), parent);
    if (master >= 0) {
        ::close(master);
    }
    return support::contentsOf(answer);
}

TEST(RunChild, LeadsTheChildAwayFromATerminalByASession) {
    EXPECT_THAT(surroundingsBelow(true), HasSubstr("group=1\nsession=1\nterminal=0\n"));
}

TEST(RunChild, MakesNoSessionWhereThereIsNoTerminal) {
    EXPECT_THAT(surroundingsBelow(false), HasSubstr("group=1\nsession=0\nterminal=0\n"));
}

TEST(RunChild, GivesTheChildDefaultSignalsWhateverTheCallerHas) {
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    sigset_t blocked;
    sigset_t mask;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGINT);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &mask);
    const auto output = runChild(command("surroundings")).output;
    pthread_sigmask(SIG_SETMASK, &mask, nullptr);
    std::signal(SIGPIPE, before);
    EXPECT_THAT(output, HasSubstr("blocked=0\nignored=0\n"));
}

TEST(RunChild, GivesTheChildNoOtherDescriptor) {
    const int careless = ::open("/dev/null", O_RDONLY); // NOLINT(android-cloexec-open): the point
    const auto output = runChild(command("surroundings")).output;
    ::close(careless);
    EXPECT_THAT(output, HasSubstr("open=3\n"));
}

TEST(RunChild, WorksForACallerWhoseStandardDescriptorsAreClosed) {
    const support::TemporaryDirectory directory;
    const auto target = directory / "target";
    std::array<int, 3> kept{};
    for (int descriptor = 0; descriptor < 3; ++descriptor) {
        kept[static_cast<std::size_t>(descriptor)] = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 10);
    }
    const int elsewhere = ::open(target.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    for (int descriptor = 0; descriptor < 3; ++descriptor) {
        ::close(descriptor);
    }
    const auto result = runChild(command("both"));
    ChildOptions options;
    options.outputDescriptor = elsewhere;
    const auto redirected = runChild(command("both"), options);
    for (int descriptor = 0; descriptor < 3; ++descriptor) {
        ::dup2(kept[static_cast<std::size_t>(descriptor)], descriptor);
        ::close(kept[static_cast<std::size_t>(descriptor)]);
    }
    ::close(elsewhere);
    EXPECT_EQ(result.output, "to output\n");
    EXPECT_EQ(result.errors, "to errors\n");
    EXPECT_EQ(support::contentsOf(target), "to output\n");
    EXPECT_EQ(redirected.errors, "to errors\n");
}

int inheritableDescriptors() {
    int count = 0;
    for (int descriptor = 0; descriptor < 1024; ++descriptor) {
        const int flags = ::fcntl(descriptor, F_GETFD);
        count += flags >= 0 && (flags & FD_CLOEXEC) == 0 ? 1 : 0;
    }
    return count;
}

TEST(RunChild, KeepsItsPipesFromProgramsStartedMeanwhile) {
    const int before = inheritableDescriptors();
    int during = -1;
    ChildOptions options;
    options.interrupted = [&during] {
        during = inheritableDescriptors();
        return true;
    };
    runChild(command("hang"), options);
    EXPECT_EQ(during, before);
}

TEST(RunChild, LeaksNoDescriptors) {
    runChild(command("both"));
    const int before = openDescriptors();
    for (int run = 0; run < 20; ++run) {
        runChild(command("both"));
        runChild("no-such-tool-here");
        runChild("exit 1");
    }
    EXPECT_EQ(openDescriptors(), before);
}

} // namespace
