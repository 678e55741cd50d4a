#include "orchard/locking/ProjectLock.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <thread>

namespace {

using orchard::LockWaiting;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using Answer = orchard::ProjectLock::Answer;

const LockWaiting atOnce;

class ProjectLock : public testing::Test {
  protected:
    support::TemporaryDirectory directory;
    std::string project = directory.write("Pumps.orp", "");
    orchard::ProjectLock mine{project, "orchard-cm rename Pump Tank"};
    orchard::ProjectLock other{project, "orchard-cm checkin Valve"};
};

TEST_F(ProjectLock, IsHeldAloneByOneProgramAtATime) {
    ASSERT_EQ(mine.holdAlone(atOnce), Answer::held);
    EXPECT_EQ(other.holdAlone(atOnce), Answer::busy);
    EXPECT_EQ(other.holdBesideOthers(atOnce), Answer::busy);
    EXPECT_FALSE(other.isHeld());
    mine.release();
    EXPECT_EQ(other.holdAlone(atOnce), Answer::held);
}

TEST_F(ProjectLock, IsHeldBesideOthersOnDifferentUnits) {
    ASSERT_EQ(mine.holdBesideOthers(atOnce), Answer::held);
    ASSERT_EQ(other.holdBesideOthers(atOnce), Answer::held);
    EXPECT_EQ(mine.holdUnits({"Pump", "Tank"}, atOnce), Answer::held);
    EXPECT_EQ(other.holdUnits({"Valve"}, atOnce), Answer::held);
    orchard::ProjectLock third{project, "third"};
    EXPECT_EQ(third.holdAlone(atOnce), Answer::busy);
}

TEST_F(ProjectLock, KeepsItsUnitsFromTheOthersBesideIt) {
    ASSERT_EQ(mine.holdBesideOthers(atOnce), Answer::held);
    ASSERT_EQ(other.holdBesideOthers(atOnce), Answer::held);
    ASSERT_EQ(mine.holdUnits({"Tank"}, atOnce), Answer::held);
    EXPECT_EQ(other.holdUnits({"Pump", "Tank"}, atOnce), Answer::busy);
    orchard::ProjectLock third{project, "third"};
    ASSERT_EQ(third.holdBesideOthers(atOnce), Answer::held);
    EXPECT_EQ(third.holdUnits({"Pump"}, atOnce), Answer::held) << "a hold that failed must not keep a part";
    mine.release();
    EXPECT_EQ(other.holdUnits({"Tank"}, atOnce), Answer::held);
}

TEST_F(ProjectLock, TakesAllUnitsForMoreThanCanBeLockedOneByOne) {
    std::vector<std::string> many;
    for (int number = 0; number < 1000; ++number) {
        many.push_back("Unit" + std::to_string(number));
    }
    ASSERT_EQ(mine.holdBesideOthers(atOnce), Answer::held);
    ASSERT_EQ(other.holdBesideOthers(atOnce), Answer::held);
    ASSERT_EQ(mine.holdUnits(many, atOnce), Answer::held);
    EXPECT_EQ(other.holdUnits({"Unit999"}, atOnce), Answer::busy);
    mine.release();
    EXPECT_EQ(other.holdUnits({"Unit999"}, atOnce), Answer::held);
}

TEST_F(ProjectLock, LetsOneOfThoseBesideEachOtherSaveAtATime) {
    ASSERT_EQ(mine.holdBesideOthers(atOnce), Answer::held);
    ASSERT_EQ(other.holdBesideOthers(atOnce), Answer::held);
    ASSERT_EQ(mine.holdSaving(atOnce), Answer::held);
    EXPECT_EQ(other.holdSaving(atOnce), Answer::busy);
    mine.releaseSaving();
    EXPECT_EQ(other.holdSaving(atOnce), Answer::held);
}

TEST_F(ProjectLock, NamesWhoHoldsIt) {
    EXPECT_EQ(other.otherHolders(), "");
    EXPECT_EQ(orchard::programsChanging(project), "");
    ASSERT_EQ(mine.holdAlone(atOnce), Answer::held);
    const auto who = AllOf(HasSubstr("process " + std::to_string(getpid())),
                           testing::EndsWith(": orchard-cm rename Pump Tank"));
    EXPECT_THAT(other.otherHolders(), who);
    EXPECT_THAT(orchard::programsChanging(project), who);
    EXPECT_EQ(mine.otherHolders(), "");
    mine.release();
    EXPECT_EQ(other.otherHolders(), "");
}

TEST_F(ProjectLock, NamesAllWhoHoldItBesideEachOther) {
    ASSERT_EQ(mine.holdBesideOthers(atOnce), Answer::held);
    ASSERT_EQ(other.holdBesideOthers(atOnce), Answer::held);
    EXPECT_THAT(orchard::programsChanging(project),
                AllOf(HasSubstr("rename Pump Tank; "), HasSubstr("checkin Valve")));
    mine.release();
    EXPECT_THAT(orchard::programsChanging(project), Not(HasSubstr("rename")));
    EXPECT_THAT(orchard::programsChanging(project), HasSubstr("checkin Valve"));
}

TEST_F(ProjectLock, ShowsALongCommandOrOneOfSeveralLinesInOneShortLine) {
    orchard::ProjectLock strange{project, "first\nsecond" + std::string(1000, 'x')};
    ASSERT_EQ(strange.holdAlone(atOnce), Answer::held);
    const std::string holder = other.otherHolders();
    EXPECT_THAT(holder, HasSubstr("first secondxxx"));
    EXPECT_THAT(holder, testing::EndsWith("x..."));
    EXPECT_LT(holder.size(), 256U);
}

TEST_F(ProjectLock, WaitsForTheOtherToEnd) {
    ASSERT_EQ(mine.holdAlone(atOnce), Answer::held);
    std::string seen;
    std::thread releasing;
    const LockWaiting waiting{std::chrono::seconds(60), {}, [&](const std::string &holders) {
                                  if (seen.empty()) {
                                      releasing = std::thread([&] { mine.release(); });
                                  }
                                  seen = holders.empty() ? seen + " " : holders;
                              }};
    EXPECT_EQ(other.holdAlone(waiting), Answer::held);
    releasing.join();
    EXPECT_THAT(seen, HasSubstr("rename Pump Tank"));
}

TEST_F(ProjectLock, WaitsUntilItIsCancelled) {
    ASSERT_EQ(mine.holdAlone(atOnce), Answer::held);
    int asked = 0;
    const LockWaiting waiting{std::chrono::hours(1), [&] { return ++asked == 3; }, {}};
    EXPECT_EQ(other.holdAlone(waiting), Answer::cancelled);
    EXPECT_FALSE(other.isHeld());
}

TEST_F(ProjectLock, ReportsAPlaceWhereNoLockCanBe) {
    orchard::ProjectLock nowhere{directory / "missing/Pumps.orp", "x"};
    EXPECT_EQ(nowhere.holdAlone(atOnce), Answer::impossible);
    EXPECT_EQ(nowhere.fault(), "No such file or directory");
}

TEST_F(ProjectLock, IsTheSameOnEveryPathToTheProject) {
    std::filesystem::create_directory(directory / "elsewhere");
    std::filesystem::create_symlink(project, directory / "elsewhere/Link.orp");
    orchard::ProjectLock linked{directory / "elsewhere/Link.orp", "x"};
    ASSERT_EQ(mine.holdAlone(atOnce), Answer::held);
    EXPECT_EQ(linked.holdAlone(atOnce), Answer::busy);
}

TEST_F(ProjectLock, SeesNoChangeWhereNobodyElseHeldIt) {
    mine.beginReading();
    for (int round = 0; round < 3; ++round) {
        ASSERT_EQ(mine.holdAlone(atOnce), Answer::held);
        EXPECT_FALSE(mine.isChangedSinceReading());
        mine.release();
    }
}

TEST_F(ProjectLock, SeesThatAnotherProgramHeldItSinceTheReading) {
    mine.beginReading();
    ASSERT_EQ(other.holdAlone(atOnce), Answer::held);
    other.release();
    ASSERT_EQ(mine.holdAlone(atOnce), Answer::held);
    EXPECT_TRUE(mine.isChangedSinceReading());
    mine.beginReading();
    EXPECT_FALSE(mine.isChangedSinceReading());
    mine.release();
    ASSERT_EQ(mine.holdAlone(atOnce), Answer::held);
    EXPECT_FALSE(mine.isChangedSinceReading());
}

TEST_F(ProjectLock, TakesWhatWasReadDuringAChangeAsOld) {
    ASSERT_EQ(other.holdAlone(atOnce), Answer::held);
    mine.beginReading();
    other.release();
    ASSERT_EQ(mine.holdAlone(atOnce), Answer::held);
    EXPECT_TRUE(mine.isChangedSinceReading());
}

TEST_F(ProjectLock, SeesTheChangeOfAProgramThatWorkedBesideIt) {
    mine.beginReading();
    ASSERT_EQ(mine.holdBesideOthers(atOnce), Answer::held);
    EXPECT_FALSE(mine.isChangedSinceReading());
    ASSERT_EQ(other.holdBesideOthers(atOnce), Answer::held);
    mine.release();
    other.release();
    ASSERT_EQ(mine.holdBesideOthers(atOnce), Answer::held);
    EXPECT_TRUE(mine.isChangedSinceReading());
}

} // namespace
