#include "CM/host/RunThread.h"

#include "orchard/worker/RunWatch.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

std::string joined(const CStringList &list) {
    std::string text;
    for (auto at = list.GetHeadPosition(); at;) {
        text += list.GetNext(at).str();
    }
    return text;
}

class Worker : public testing::Test {
  protected:
    ~Worker() override { orchard::setRunWatch({}); }
    [[nodiscard]] std::string file(const char *name) const { return directory / name; }
    [[nodiscard]] std::string contentOf(const char *name) const { return support::contentsOf(file(name)); }
    /// Whether the process whose id a command has written to the file has ended.
    [[nodiscard]] bool hasEnded(const char *name) const {
        const pid_t pid = std::stoi(contentOf(name));
        for (int i = 0; i < 50; ++i) {
            std::ifstream state("/proc/" + std::to_string(pid) + "/stat");
            std::string text;
            std::getline(state, text);
            if (text.empty() || text.find(") Z") != std::string::npos) {
                return true;
            }
            std::this_thread::sleep_for(100ms);
        }
        return false;
    }
    const support::TemporaryDirectory directory;
};

TEST_F(Worker, CollectsBothChannelsAsLines) {
    RunThread worker(R"(printf 'one\ntwo'; printf 'bad\n' >&2)");
    EXPECT_EQ(worker.getStatus(-1), 0);
    ASSERT_EQ(worker.outputLines.GetCount(), 2);
    EXPECT_EQ(worker.outputLines.GetHead(), "one\n");
    EXPECT_EQ(worker.outputLines.GetTail(), "two");
    ASSERT_EQ(worker.errorLines.GetCount(), 1);
    EXPECT_EQ(worker.errorLines.GetHead(), "bad\n");
}

TEST_F(Worker, AToolsExitStatusIsNoStatusOfTheWait) {
    RunThread worker("sh -c 'exit 3'");
    EXPECT_EQ(worker.getStatus(-1), 0);
    EXPECT_TRUE(worker.errorLines.IsEmpty());
}

TEST_F(Worker, RunsTheCommandOnce) {
    RunThread worker("sh -c 'echo x >> " + CString(file("runs")) + "; echo y'");
    EXPECT_EQ(worker.getStatus(-1), 0);
    EXPECT_EQ(worker.getStatus(-1), 0);
    EXPECT_EQ(contentOf("runs"), "x\n");
    EXPECT_EQ(worker.outputLines.GetCount(), 1);
}

TEST_F(Worker, SurvivesAFloodOnBothChannels) {
    const CString line(std::string(99, 'x'));
    RunThread worker("sh -c 'yes " + line + " | head -c 50000000; yes " + line + " | head -c 50000000 >&2'");
    EXPECT_EQ(worker.getStatus(-1), 0);
    for (const CStringList &lines : {worker.outputLines, worker.errorLines}) {
        const std::string text = joined(lines);
        EXPECT_EQ(text.size(), 50'000'000U);
        EXPECT_EQ(std::ranges::count(text, '\n'), 500'000);
        EXPECT_TRUE(text.ends_with("\n" + line.str() + "\n"));
    }
}

TEST_F(Worker, BothChannelsAtOnceDoNotBlockEachOther) {
    RunThread worker("sh -c 'yes out | head -c 3000000 & yes err | head -c 3000000 >&2; wait'");
    EXPECT_EQ(worker.getStatus(60'000), 0);
    EXPECT_EQ(joined(worker.outputLines).size(), 3'000'000U);
    EXPECT_EQ(joined(worker.errorLines).size(), 3'000'000U);
}

TEST_F(Worker, KeepsBytesThatAreNoUtf8) {
    RunThread worker(R"(printf '\377\200\n\000z')");
    EXPECT_EQ(worker.getStatus(-1), 0);
    EXPECT_EQ(joined(worker.outputLines), std::string("\xff\x80\n\0z", 5));
}

TEST_F(Worker, AHangingToolIsEndedWithAllThatItStarted) {
    const auto start = std::chrono::steady_clock::now();
    RunThread worker("sh -c 'sleep 300 & echo $! > " + CString(file("pid")) + "; echo partial; wait'");
    EXPECT_EQ(worker.getStatus(500), WAIT_TIMEOUT);
    EXPECT_EQ(joined(worker.outputLines), "partial\n");
    EXPECT_TRUE(worker.errorLines.IsEmpty());
    EXPECT_TRUE(hasEnded("pid"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
}

TEST_F(Worker, AToolThatIgnoresTheEndIsKilled) {
    RunThread worker(R"(sh -c 'trap "" TERM; echo $$ > )" + CString(file("pid")) + "; while :; do sleep 1; done'");
    EXPECT_EQ(worker.getStatus(300), WAIT_TIMEOUT);
    EXPECT_TRUE(hasEnded("pid"));
}

TEST_F(Worker, SaysThatAToolWasKilled) {
    RunThread worker("sh -c 'printf half >&2; kill -9 $$'");
    EXPECT_EQ(worker.getStatus(-1), 0);
    EXPECT_EQ(joined(worker.errorLines), "half\nerror: the command was ended by signal 9 (Killed)\n");
}

TEST_F(Worker, SaysThatAToolIsNotThere) {
    RunThread worker("no-such-tool-anywhere -q \"a b\"");
    EXPECT_EQ(worker.getStatus(-1), 0);
    EXPECT_EQ(joined(worker.errorLines),
              "no-such-tool-anywhere: No such file or directory; is the tool installed?\n");
}

TEST_F(Worker, SaysThatAToolMayNotBeExecuted) {
    std::ofstream(file("tool")) << "text";
    RunThread worker(CString(file("tool")) + " x");
    EXPECT_EQ(worker.getStatus(-1), 0);
    EXPECT_EQ(joined(worker.errorLines), file("tool") + ": Permission denied\n");
}

TEST_F(Worker, AnotherProcessThatHoldsTheChannelsDoesNotHoldTheWait) {
    const auto start = std::chrono::steady_clock::now();
    RunThread worker("sh -c 'sleep 60 & echo done'");
    EXPECT_EQ(worker.getStatus(-1), 0);
    EXPECT_EQ(joined(worker.outputLines), "done\n");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
}

TEST_F(Worker, SendsTheOutputToAnOpenFile) {
    const int handle = open(file("out").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    ASSERT_GE(handle, 0);
    {
        RunThreadRedirect worker("sh -c 'echo out; echo err >&2'", handle);
        EXPECT_EQ(worker.getStatus(-1), 0);
        EXPECT_TRUE(worker.outputLines.IsEmpty());
        EXPECT_EQ(joined(worker.errorLines), "err\n");
    }
    EXPECT_EQ(contentOf("out"), "out\n");
    EXPECT_EQ(write(handle, "more\n", 5), 5) << "the handle is still the caller's";
    close(handle);
}

TEST_F(Worker, AnInterruptionEndsTheToolAndSaysSo) {
    bool stop = false;
    orchard::RunWatch watch;
    watch.started = [&](const std::string &) { stop = true; };
    int asked = 0;
    watch.interrupted = [&] { return stop && ++asked > 3; };
    orchard::setRunWatch(watch);
    const auto start = std::chrono::steady_clock::now();
    RunThread worker("sleep 300");
    EXPECT_EQ(worker.getStatus(-1), 0);
    EXPECT_EQ(joined(worker.errorLines), "error: the command was interrupted\n");
    EXPECT_EQ(worker.end.kind, RunEnd::Kind::interrupted);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
}

TEST_F(Worker, NothingIsStartedAfterAnInterruption) {
    orchard::RunWatch watch;
    watch.interrupted = [] { return true; };
    orchard::setRunWatch(watch);
    RunThread worker("touch " + CString(file("touched")));
    EXPECT_EQ(worker.getStatus(-1), 0);
    EXPECT_FALSE(std::filesystem::exists(file("touched")));
    EXPECT_EQ(worker.end.kind, RunEnd::Kind::withheld);
    EXPECT_EQ(joined(worker.errorLines), "error: the command was interrupted\n");
}

TEST_F(Worker, SaysHowTheRunEnded) {
    using enum RunEnd::Kind;
    const auto endOf = [](const char *command, int limit) {
        RunThread worker(command);
        worker.getStatus(limit);
        return worker.end;
    };
    EXPECT_EQ(endOf("true", -1).kind, exited);
    EXPECT_EQ(endOf("sh -c 'exit 7'", -1).code, 7);
    const RunEnd killed = endOf("sh -c 'kill -9 $$'", -1);
    EXPECT_EQ(killed.kind, killedBySignal);
    EXPECT_EQ(killed.code, 9);
    EXPECT_EQ(killed.text, "Killed");
    EXPECT_EQ(endOf("sleep 1000", 100).kind, timedOut);
    const RunEnd missing = endOf("no-such-program-anywhere", -1);
    EXPECT_EQ(missing.kind, notStarted);
    EXPECT_EQ(missing.code, ENOENT);
    EXPECT_EQ(RunThread("true").end.kind, unknown) << "before the wait";
}

TEST_F(Worker, TellsTheWatchHowARunEnded) {
    std::vector<std::string> started;
    std::vector<RunEnd> ended;
    orchard::RunWatch watch;
    watch.started = [&](const std::string &command) { started.push_back(command); };
    watch.ended = [&](const RunEnd &end) { ended.push_back(end); };
    orchard::setRunWatch(watch);
    RunThread worker("sh -c 'exit 7'");
    EXPECT_EQ(worker.getStatus(-1), 0);
    EXPECT_EQ(started, std::vector<std::string>{"sh -c 'exit 7'"});
    ASSERT_EQ(ended.size(), 1U);
    EXPECT_EQ(ended[0].kind, RunEnd::Kind::exited);
    EXPECT_EQ(ended[0].code, 7);
}

} // namespace
