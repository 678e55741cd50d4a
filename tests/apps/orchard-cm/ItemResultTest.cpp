#include "apps/orchard-cm/operation/ItemResult.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace orchard_cm;
using Outcome = ItemResult::Outcome;

namespace {

/// An item whose file and unit were there before and are there now.
ItemResult pump(bool writable) {
    ItemResult result;
    result.name = "Drives/Pump";
    result.file = "/w/Pump.ocl";
    result.before.exists = result.after.exists = true;
    result.after.writable = writable;
    result.before.inModel = result.after.inModel = true;
    return result;
}

std::string text(const ItemResult &result) {
    std::ostringstream out;
    write(out, result, {"checked out"});
    return out.str();
}

} // namespace

TEST(Expectation, IsMetByAFileAndAUnitThatAreThere) {
    EXPECT_EQ(unmet({}, pump(false)), "");
    EXPECT_EQ(unmet({.writable = true}, pump(true)), "");
}
TEST(Expectation, IsNotMetByAFileThatIsGone) {
    auto result = pump(false);
    result.after.exists = false;
    EXPECT_EQ(unmet({}, result), "the tool left no file");
    EXPECT_EQ(unmet({.file = false}, result), "");
}
TEST(Expectation, IsNotMetByALockThatLeavesTheFileReadOnly) {
    EXPECT_EQ(unmet({.writable = true}, pump(false)), "the file is still read-only");
}
TEST(Expectation, IsNotMetByAUnitThatLeftTheModel) {
    auto result = pump(false);
    result.after.inModel = false;
    EXPECT_EQ(unmet({}, result), "the unit could not be reloaded, and is no longer in the model");
    EXPECT_EQ(unmet({.unit = false}, result), "");
}

TEST(ResultText, SumsUpWhatWasNotBegunInOneLine) {
    auto done = pump(true);
    done.outcome = Outcome::done;
    auto later = pump(true);
    later.outcome = Outcome::notBegun;
    later.name = "Drives/Valve";
    std::vector<ItemResult> results{done, later};
    const auto lastLine = [&] {
        std::ostringstream out;
        write(out, results, {"checked out"});
        const std::string all = out.str();
        return all.substr(all.find('\n') + 1);
    };
    EXPECT_EQ(lastLine(), "Drives/Valve: not begun; run the same command again to do the rest\n");
    results.push_back(later);
    EXPECT_EQ(lastLine(), "Drives/Valve and 1 other: not begun; run the same command again to do the rest\n");
    results.insert(results.end(), 598, later);
    EXPECT_EQ(lastLine(), "Drives/Valve and 599 others: not begun; run the same command again to do the rest\n");
}
TEST(ResultText, TellsWhatChanged) {
    auto result = pump(true);
    result.outcome = Outcome::done;
    result.fileChanged = result.reloaded = true;
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
    result.after.exists = false;
    result.fileChanged = true;
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
