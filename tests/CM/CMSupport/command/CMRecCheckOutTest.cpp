#include "CM/CMSupport/command/CMRecCheckOut.h"

#include "tests/CM/CMSupport/command/CheckOutFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class RecCheckOut : public CheckOutFixture {
  protected:
    int checkOut(CMUnitList &units) { return CMRecCheckOut()(units, args, diags, false); }
};

TEST_F(RecCheckOut, RunsOneCommandAUnitAndReloadsNothing) {
    auto units = list(&host.addUnit("Pump"), &host.addUnit("Valve"));
    EXPECT_EQ(checkOut(units), 1);
    const std::string log = "log 4 ../CM/CMSupport/RecCheckOut: ";
    EXPECT_THAT(
        calls(),
        ElementsAre(log + "Executing the following command to recursively check out the file(s): co Pump.ocl",
                    "run co Pump.ocl", log + "Recursive check out command returned the following: ",
                    log + "Executing the following command to recursively check out the file(s): co Valve.ocl",
                    "run co Valve.ocl", log + "Recursive check out command returned the following: "));
    expectNothingIsLeft();
}

TEST_F(RecCheckOut, TakesDuplicatesAsTheyAreSkipsNullAndLeavesTheListAlone) {
    auto &pump = host.addUnit("Pump");
    auto units = list(&pump, nullptr, &pump);
    EXPECT_EQ(checkOut(units), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Pump.ocl", "co Pump.ocl"));
    EXPECT_EQ(units.GetCount(), 3);
}

TEST_F(RecCheckOut, SavesOnceIfThePropertyAsksAndTheListIsNotEmpty) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    CMUnitList none;
    EXPECT_EQ(checkOut(none), 0);
    EXPECT_THAT(calls(), IsEmpty());
    auto units = list(&host.addUnit("Pump"), &host.addUnit("Valve"));
    checkOut(units);
    EXPECT_EQ(calls().front(), "save model");
    EXPECT_EQ(host.callsOf("save model").size(), 1U);
}

TEST_F(RecCheckOut, SavesWithoutBeingAskedByTheCaller) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    CMProperty::saveOnCheckout(0);
    auto units = list(&host.addUnit("Pump"));
    checkOut(units);
    EXPECT_EQ(host.callsOf("save model").size(), 1U);
    EXPECT_EQ(CMProperty::saveOnCheckout(-1), 0);
}

TEST_F(RecCheckOut, ExpandsWithoutTheHybridFlagWhateverItWasPassed) {
    useProvider();
    auto units = list(&host.addUnit("Pump"));
    EXPECT_EQ(CMRecCheckOut()(units, args, diags, true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Pump.ocl"));
}

TEST_F(RecCheckOut, AsksForTheToolWithoutTheHybridFlagWhateverItWasPassed) {
    useProvider();
    host.setTool("None");
    auto units = list(&host.addUnit("Pump"));
    EXPECT_EQ(CMRecCheckOut()(units, args, diags, true), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

TEST_F(RecCheckOut, SelectsTheUnitsArchive) {
    setToolProperty(IPN::CMCheckOut, "co $archive");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    setToolProperty(IPN::CMArchiveSelection, "Directory");
    auto &pump = host.addUnit("Pump");
    pump.batchArchive = "/archives/pump";
    auto units = list(&pump);
    checkOut(units);
    EXPECT_THAT(host.worker.commands, ElementsAre("co /archives/pump"));
}

TEST_F(RecCheckOut, StartsTheGuardBeforeTheExpansionAndCommitsIt) {
    setToolProperty(IPN::CMCheckOut, "co all");
    useOldLayout();
    host.worker.run = [this](const CString &) {
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    CMUnitList units = list(&project());
    EXPECT_EQ(checkOut(units), 1);
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "new");
    EXPECT_LT(lookUpOf("SupportTreeRepository"), lookUpOf(IPN::CMCheckOut));
}

TEST_F(RecCheckOut, TheToolFindsNoCopyOfTheProjectFile) {
    useOldLayout();
    bool isCopied = true;
    host.worker.run = [&](const CString &) {
        isCopied = exists(scratch / "Plant.ory");
        return recording::ToolRun{};
    };
    CMUnitList units = list(&project());
    EXPECT_EQ(checkOut(units), 1);
    EXPECT_FALSE(isCopied);
}

TEST_F(RecCheckOut, WithoutAToolGivesOneDiagnostic) {
    host.setTool("none");
    auto units = list(&host.addUnit("Pump"));
    EXPECT_EQ(checkOut(units), 0);
    EXPECT_EQ(diags.GetCount(), 1);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(RecCheckOut, OnlyTheLastUnitDecidesTheResult) {
    setToolProperty(IPN::CMCheckOut, "co $extra $Unit");
    ExtraArgument extra;
    extra.answers = {false, true};
    args.AddTail(&extra);
    auto units = list(&host.addUnit("Pump"), &host.addUnit("Valve"));
    EXPECT_EQ(checkOut(units), 1);
    extra.answers = {false, true, true, false};
    EXPECT_EQ(checkOut(units), 0);
    args.RemoveAll();
}

} // namespace
