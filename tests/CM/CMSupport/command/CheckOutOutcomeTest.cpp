// Tests the outcomes of check out and its undoing.
#include "CM/CMSupport/command/CMCheckOut.h"
#include "CM/CMSupport/command/CMCheckOutFromArchive.h"
#include "CM/CMSupport/command/CMUnCheckout.h"
#include "tests/CM/CMSupport/command/OutcomeFixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using Kind = CMOutcome::Kind;

namespace {

TEST_F(Outcome, OfACheckOutIsReadAgainOrHasItsHeaderUpdated) {
    auto &pump = host.addUnit("Pump");
    runOn<CMCheckOut>(pump);
    EXPECT_EQ(seen.last().reload, CMOutcome::Reload::content);
    host.reload.compare = [](const CString &) { return 1; };
    runOn<CMCheckOut>(pump);
    EXPECT_EQ(seen.last().reload, CMOutcome::Reload::header);
    EXPECT_EQ(seen.last().unitNow, &pump);
}

TEST_F(Outcome, OfACheckOutNamesTheUnitThatTheReloadGave) {
    auto &pump = host.addUnit("Pump");
    IUnit *reloaded = nullptr;
    host.reload.reloadUnit = [&](IUnit *unit, int) {
        return reloaded = &host.replaceClass(dynamic_cast<recording::Class &>(*unit));
    };
    runOn<CMCheckOut>(pump);
    EXPECT_EQ(seen.last().unit, &pump) << "for finding the entry of the list";
    EXPECT_EQ(seen.last().unitNow, reloaded);
}

TEST_F(Outcome, OfACheckOutIsNotLoadedWhereTheFileCannotBeRead) {
    host.reload.reloadUnit = [](IUnit *, int) { return nullptr; };
    auto &pump = host.addUnit("Pump");
    runOn<CMCheckOut>(pump);
    EXPECT_EQ(seen.last().kind, Kind::notLoaded);
    EXPECT_EQ(seen.last().unitNow, nullptr);
    EXPECT_THAT(reason(), HasSubstr("could not be loaded into the model"));
    EXPECT_EQ(seen.last().runs.size(), 1U);
}

TEST_F(Outcome, OfACheckOutIsDeclinedByANo) {
    auto &pump = host.addUnit("Pump");
    makeWritable(pump);
    answer("no");
    runOn<CMCheckOut>(pump, host.addUnit("Valve"));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl declined", "Valve.ocl done"));
    EXPECT_EQ(seen.outcomes[0].reason, "the file is writable, and the answer was No");
}

TEST_F(Outcome, OfACheckOutIsGoneWhereAnEarlierReloadReplacedTheUnit) {
    auto &drives = host.addUnit("Drives");
    auto &pump = host.addUnit("Pump", &drives);
    const IUnit *const before = &pump;
    host.reload.reloadUnit = [&](IUnit *unit, int) {
        if (unit == &drives) {
            host.replaceClass(pump);
        }
        return unit;
    };
    runOn<CMCheckOut>(drives, pump);
    ASSERT_EQ(seen.outcomes.size(), 2U);
    EXPECT_EQ(seen.last().kind, Kind::gone);
    EXPECT_EQ(seen.last().unit, before);
    EXPECT_EQ(seen.last().unitNow, nullptr);
    EXPECT_THAT(reason(), HasSubstr("the reload of an earlier unit replaced this one"));
}

TEST_F(Outcome, OfACheckOutFromTheArchiveNamesTheItem) {
    CMArchiveItem item("Pump.ocl", "1.1", CMArchiveItem::readOnly, "", "");
    CMArchiveItemList items;
    CMArchiveItem *entry = &item;
    items.AddTail(entry);
    CMCheckOutFromArchive()(items, args, diags);
    EXPECT_EQ(seen.last().item, &item);
    EXPECT_EQ(seen.last().unit, nullptr);
    EXPECT_EQ(seen.last().runs[0].command, "coa Pump.ocl");
}

TEST_F(Outcome, OfAnUndoneCheckOutIsReadAgain) {
    auto &pump = host.addUnit("Pump");
    runOn<CMUnCheckout>(pump);
    EXPECT_EQ(seen.last().kind, Kind::done);
    EXPECT_EQ(seen.last().reload, CMOutcome::Reload::content);
    host.reload.reloadUnit = [](IUnit *, int) { return nullptr; };
    runOn<CMUnCheckout>(pump);
    EXPECT_EQ(seen.last().kind, Kind::notLoaded);
}

TEST_F(Outcome, ComesAfterTheGuardOfTheProjectFileHasDoneItsPart) {
    useOldLayout();
    toolDoes([&](const CString &) {
        write(scratch / "Plant.ory", "from the tool");
        return recording::ToolRun{};
    });
    runOn<CMCheckOut>(project());
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "from the tool");
    EXPECT_TRUE(seen.last().fileChanged);
}

} // namespace
