#include "apps/orchard-cm/operation/ItemResult.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace orchard_cm;
using End = platform::ChildResult::End;
using Outcome = ItemResult::Outcome;
using testing::HasSubstr;

namespace {

void ran(Journal &journal, const std::string &command, End end = End::exited, int code = 0) {
    journal.runStarted(command);
    journal.runEnded({command, end, code});
}

/// An item whose file and unit were there before and are there now.
ItemResult pump(bool writable) {
    ItemResult result;
    result.name = "Drives/Pump";
    result.file = "/w/Pump.ocl";
    result.before.file.exists = result.after.file.exists = true;
    result.after.file.writable = writable;
    result.before.inModel = result.after.inModel = true;
    return result;
}

ItemResult judged(ItemResult result, const Journal &journal, bool lock) {
    judge(result, runsOfItems({result.file}, journal).items.front(), {.writable = lock});
    return result;
}

std::string text(const ItemResult &result) {
    std::ostringstream out;
    write(out, result, {"checked out"});
    return out.str();
}

} // namespace

TEST(Judgement, IsDoneAfterAGoodRun) {
    Journal journal;
    ran(journal, "co -l /w/Pump.ocl");
    EXPECT_EQ(judged(pump(true), journal, true).outcome, Outcome::done);
    EXPECT_EQ(judged(pump(false), journal, false).outcome, Outcome::done);
}
TEST(Judgement, IsFailedByTheToolsExitStatus) {
    Journal journal;
    ran(journal, "co -l /w/Pump.ocl", End::exited, 1);
    const auto result = judged(pump(true), journal, true);
    EXPECT_EQ(result.outcome, Outcome::failed);
    EXPECT_EQ(result.reason, "the tool failed with exit status 1");
}
TEST(Judgement, SaysThatAToolIsNotInstalled) {
    Journal journal;
    ran(journal, "co /w/Pump.ocl", End::exited, 127);
    EXPECT_THAT(judged(pump(false), journal, false).reason, HasSubstr("not installed"));
}
TEST(Judgement, IsFailedByASignalATimeOutAndAFailedStart) {
    for (const auto &[end, code, words] :
         {std::tuple(End::killedBySignal, 11, "died of signal 11"), std::tuple(End::timedOut, 0, "time limit"),
          std::tuple(End::notStarted, ENOENT, "not installed"),
          std::tuple(End::notStarted, EACCES, "could not be started")}) {
        Journal journal;
        ran(journal, "co /w/Pump.ocl", end, code);
        const auto result = judged(pump(false), journal, false);
        EXPECT_EQ(result.outcome, Outcome::failed);
        EXPECT_THAT(result.reason, HasSubstr(words));
    }
}
TEST(Judgement, IsFailedByAnErrorThatWasShownAfterTheRun) {
    Journal journal;
    ran(journal, "co /w/Pump.ocl");
    journal.error("the CM tool reported an error");
    EXPECT_EQ(judged(pump(false), journal, false).reason, "the CM tool reported an error");
}
TEST(Judgement, IsFailedByAFileThatIsGone) {
    Journal journal;
    ran(journal, "co /w/Pump.ocl");
    auto result = pump(false);
    result.after.file.exists = false;
    EXPECT_EQ(judged(result, journal, false).reason, "the tool left no file");
}
TEST(Judgement, IsFailedByALockThatLeavesTheFileReadOnly) {
    Journal journal;
    ran(journal, "co -l /w/Pump.ocl");
    EXPECT_EQ(judged(pump(false), journal, true).reason, "the file is still read-only");
}
TEST(Judgement, IsFailedByAUnitThatLeftTheModel) {
    Journal journal;
    ran(journal, "co /w/Pump.ocl");
    auto result = pump(false);
    result.after.inModel = false;
    EXPECT_EQ(judged(result, journal, false).outcome, Outcome::failed);
}
TEST(Judgement, IsSkippedIfAQuestionWasAskedAndNoToolRan) {
    Journal journal;
    journal.question("(/w/Pump.ocl)");
    EXPECT_EQ(judged(pump(true), journal, true).outcome, Outcome::skipped);
    ran(journal, "co -l /w/Pump.ocl");
    EXPECT_EQ(judged(pump(true), journal, true).outcome, Outcome::done);
}
TEST(Judgement, IsLeftWithoutAReasonIfNoToolRanAndNothingWasAsked) {
    const auto result = judged(pump(false), Journal(), false);
    EXPECT_EQ(result.outcome, Outcome::failed);
    EXPECT_EQ(result.reason, "");
}

TEST(ResultText, TellsWhatChanged) {
    auto result = pump(true);
    result.outcome = Outcome::done;
    result.after.file.digest = 1;
    result.before.version = "1.2";
    result.after.version = "1.3";
    result.before.state = "RO";
    result.after.state = "RW";
    result.after.locker = "anna";
    result.after.object = &result;
    EXPECT_EQ(text(result),
              "Drives/Pump: checked out, file changed, version 1.2 -> 1.3, RO -> RW, locked by anna, reloaded\n");
}
TEST(ResultText, TellsWhatStayed) {
    auto result = pump(false);
    result.outcome = Outcome::done;
    result.before.state = result.after.state = "RO";
    EXPECT_EQ(text(result), "Drives/Pump: checked out, file unchanged, RO\n");
}
TEST(ResultText, TellsWhyAndWhetherTheFileIsStillWhole) {
    auto result = pump(false);
    result.reason = "the tool left no file";
    result.after.file.exists = false;
    EXPECT_EQ(text(result), "Drives/Pump: failed: the tool left no file (the file is gone)\n");
}
TEST(ResultJson, HoldsBothStates) {
    auto result = pump(true);
    result.outcome = Outcome::done;
    result.before.state = "RO";
    result.after.state = "RW";
    const Json json = toJson(result, {"checked out"});
    EXPECT_EQ(json["outcome"], "checked out");
    EXPECT_EQ(json["modeChanged"], true);
    EXPECT_EQ(json["fileChanged"], false);
    EXPECT_EQ(json["before"]["state"], "RO");
    EXPECT_EQ(json["after"]["writable"], true);
    EXPECT_FALSE(json.contains("reason"));
}
