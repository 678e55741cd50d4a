#include "CM/platform/FaultGuard.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/resource.h>

namespace {

using platform::runGuarded;

/// An unmapped address, computed so that no compiler can know it.
volatile int *nowhere() {
    static volatile std::uintptr_t address = 16;
    return reinterpret_cast<volatile int *>(address); // NOLINT(performance-no-int-to-ptr): the point
}

__attribute__((no_sanitize("undefined", "address"))) int readNowhere() { return *nowhere(); }

/// The flags without SA_RESTORER, which the C library adds to every handler that it sets, the default one
/// included.
int flagsOf(const struct sigaction &action) {
    constexpr int saRestorer = 0x04000000;
    return action.sa_flags & ~saRestorer;
}

TEST(FaultGuard, LetsACallComeToItsEnd) {
    int done = 0;
    EXPECT_TRUE(runGuarded([&done] { done = 1; }));
    EXPECT_EQ(done, 1);
}

TEST(FaultGuard, SurvivesADeadPointer) {
    volatile bool reached = false;
    EXPECT_FALSE(runGuarded([&reached] {
        static_cast<void>(readNowhere());
        reached = true;
    }));
    EXPECT_FALSE(reached);
}

TEST(FaultGuard, SurvivesAMappingThatIsGone) {
    void *page = ::mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(page, MAP_FAILED);
    auto *number = static_cast<volatile int *>(page);
    *number = 5;
    ::mprotect(page, 4096, PROT_NONE);
    EXPECT_FALSE(runGuarded([number] { *number = 6; }));
    ::munmap(page, 4096);
}

TEST(FaultGuard, SurvivesFaultAfterFault) {
    for (int count = 0; count < 100; ++count) {
        ASSERT_FALSE(runGuarded([] { static_cast<void>(readNowhere()); }));
    }
}

class FaultGuardSignals : public testing::TestWithParam<int> {};

TEST_P(FaultGuardSignals, AreSurvived) {
    EXPECT_FALSE(runGuarded([] { std::raise(GetParam()); }));
}

INSTANTIATE_TEST_SUITE_P(All, FaultGuardSignals, testing::Values(SIGSEGV, SIGBUS, SIGFPE, SIGILL));

TEST(FaultGuard, CatchesWhatIsThrown) {
    EXPECT_FALSE(runGuarded([] { throw std::runtime_error("x"); }));
    EXPECT_FALSE(runGuarded([] { throw 1; }));
}

TEST(FaultGuard, DestroysTheObjectsOfACallThatThrew) {
    bool destroyed = false;
    struct Object {
        bool &flag;
        ~Object() { flag = true; }
    };
    EXPECT_FALSE(runGuarded([&destroyed] {
        const Object object{destroyed};
        throw 1;
    }));
    EXPECT_TRUE(destroyed);
}

TEST(FaultGuard, ReturnsFromAnInnerFaultIntoTheOuterCall) {
    volatile bool innerSurvived = true;
    volatile bool outerWentOn = false;
    EXPECT_TRUE(runGuarded([&] {
        innerSurvived = runGuarded([] { static_cast<void>(readNowhere()); });
        outerWentOn = true;
    }));
    EXPECT_FALSE(innerSurvived);
    EXPECT_TRUE(outerWentOn);
}

TEST(FaultGuard, CatchesAFaultOfTheOuterCallBehindAnInnerOne) {
    EXPECT_FALSE(runGuarded([] {
        static_cast<void>(runGuarded([] { throw 1; }));
        static_cast<void>(readNowhere());
    }));
}

/// Returns the action for a signal. Sets it once, since the C library adds a flag to every action that is set.
struct sigaction actionOf(int signal) {
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    sigaction(signal, &action, nullptr);
    sigaction(signal, nullptr, &action);
    return action;
}

TEST(FaultGuard, PutsTheHandlersBackThatWereThere) {
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) {
        const struct sigaction before = actionOf(signal);
        struct sigaction during {};
        struct sigaction after {};
        EXPECT_TRUE(runGuarded([&] { sigaction(signal, nullptr, &during); }));
        sigaction(signal, nullptr, &after);
        EXPECT_EQ(before.sa_sigaction, after.sa_sigaction);
        EXPECT_EQ(flagsOf(before), flagsOf(after));
        EXPECT_NE(during.sa_sigaction, before.sa_sigaction);
        static_cast<void>(runGuarded([] { static_cast<void>(readNowhere()); }));
        sigaction(signal, nullptr, &after);
        EXPECT_EQ(before.sa_sigaction, after.sa_sigaction);
    }
}

TEST(FaultGuard, LeavesTheSignalMaskAndTheFaultStackAsTheyWere) {
    sigset_t before;
    sigset_t after;
    stack_t stackBefore{};
    stack_t stackAfter{};
    sigprocmask(SIG_SETMASK, nullptr, &before);
    sigaltstack(nullptr, &stackBefore);
    EXPECT_FALSE(runGuarded([] { static_cast<void>(readNowhere()); }));
    sigprocmask(SIG_SETMASK, nullptr, &after);
    sigaltstack(nullptr, &stackAfter);
    for (int signal = 1; signal < 32; ++signal) {
        EXPECT_EQ(sigismember(&before, signal), sigismember(&after, signal)) << signal;
    }
    EXPECT_EQ(stackBefore.ss_sp, stackAfter.ss_sp);
    EXPECT_EQ(stackBefore.ss_flags, stackAfter.ss_flags);
}

TEST(FaultHandlers, StayInPlaceForManyGuardedCallsAndPutBackWhatWasThere) {
    const struct sigaction before = actionOf(SIGSEGV);
    struct sigaction between {};
    struct sigaction after {};
    {
        const platform::FaultHandlers handlers;
        EXPECT_FALSE(runGuarded([] { static_cast<void>(readNowhere()); }));
        sigaction(SIGSEGV, nullptr, &between);
        {
            const platform::FaultHandlers inner;
            EXPECT_FALSE(runGuarded([] { static_cast<void>(readNowhere()); }));
        }
        EXPECT_FALSE(runGuarded([] { static_cast<void>(readNowhere()); }));
        EXPECT_TRUE(runGuarded([] {}));
    }
    sigaction(SIGSEGV, nullptr, &after);
    EXPECT_NE(between.sa_sigaction, before.sa_sigaction);
    EXPECT_EQ(after.sa_sigaction, before.sa_sigaction);
    EXPECT_EQ(flagsOf(after), flagsOf(before));
}

TEST(FaultHandlersDeathTest, GuardNothingThemselves) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            std::signal(SIGSEGV, SIG_DFL);
            const platform::FaultHandlers handlers;
            static_cast<void>(readNowhere());
        },
        "");
}

// Each round uses a good part of the stack; the depth makes sure that the compiler can't turn it into a loop.
__attribute__((noinline, no_sanitize("undefined", "address"))) int consumeStack(int depth) {
    volatile char frame[4096]; // NOLINT(cppcoreguidelines-avoid-c-arrays): std::array has no volatile access
    frame[depth % 4096] = static_cast<char>(depth);
    return depth < 0 ? 0 : consumeStack(depth + 1) + frame[depth % 4096];
}

TEST(FaultGuard, SurvivesACallThatUsesUpTheStack) {
    EXPECT_FALSE(runGuarded([] { static_cast<void>(consumeStack(0)); }));
    EXPECT_TRUE(runGuarded([] {}));
}

TEST(FaultGuardDeathTest, IsNoProtectionOutsideTheCall) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            static_cast<void>(runGuarded([] {}));
            std::signal(SIGSEGV, SIG_DFL);
            static_cast<void>(readNowhere());
        },
        "");
}

} // namespace
