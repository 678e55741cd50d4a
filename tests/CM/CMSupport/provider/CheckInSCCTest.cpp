// Tests the check in of units through the provider.
#include "CM/CMSupport/provider/CheckInSCC.h"

#include "CM/CMSupport/provider/SCCFacade.h"
#include "tests/CM/CMSupport/provider/OperationFixture.h"

using resources::Text;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

constexpr auto withComment = " comment=first:log flags=0 options=null";
constexpr long out = SCC_STATUS_CONTROLLED | SCC_STATUS_CHECKEDOUT;

class CheckInByProvider : public OperationFixture {
  protected:
    CheckInByProvider() {
        provider->otherState = out;
        args = {&first};
    }
    template <class... UNITS> int checkIn(UNITS &...given) {
        units = list(&given...);
        return SCCFacade::SCCCheckIn(units, args, diags);
    }
    void addNewUnits() { setProviderProperty("AddNewUnitsToArchiveDuringCheckin", "True"); }
    /// What is left of the effects without a transaction for adding.
    static Effects withoutUndo(Effects all) {
        std::erase_if(all, [](const std::string &effect) { return effect.starts_with("undo "); });
        return all;
    }

    EchoArgument first{"first"};
    recording::Class &pump = host.addUnit("Pump");
    recording::Class &valve = host.addUnit("Valve");
    CMUnitList units;
};

TEST_F(CheckInByProvider, SavesAsksCallsOnceAndUpdatesInThisOrder) {
    EXPECT_EQ(checkIn(pump, valve), 0);
    EXPECT_THAT(withoutUndo(effects()),
                ElementsAreArray(joined({{"save model"},
                                         logged("Getting SCC Context to perform check in"),
                                         queried(path(pump), false),
                                         logged("File Status is 3"),
                                         queried(path(valve), false),
                                         logged("File Status is 3"),
                                         called("SccCheckin", {path(pump), path(valve)}, withComment, false),
                                         {"ask 64: " + success(Text::providerHasCheckedIn)},
                                         allUpdated(pump, 3),
                                         allUpdated(valve, 3)})));
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(CheckInByProvider, WritesItsEntryToTheDebugTrace) {
    traceOn();
    checkIn(pump);
    EXPECT_EQ(shown.str(), "+++ Entering CheckInSCC\n");
}

TEST_F(CheckInByProvider, WithoutAnArgumentHasAnEmptyComment) {
    args.RemoveAll();
    checkIn(pump);
    EXPECT_THAT(callsOn("SccCheckin").back(), HasSubstr(" comment= flags"));
}

TEST_F(CheckInByProvider, SavesNothingForAnEmptyList) {
    EXPECT_EQ(checkIn(), 1);
    EXPECT_THAT(effects(), ElementsAre("log: Getting SCC Context to perform check in"));
}

TEST_F(CheckInByProvider, WithoutAContextGivesZero) {
    disconnect();
    EXPECT_EQ(checkIn(pump), 0);
    EXPECT_THAT(provider->calls, IsEmpty());
}

TEST_F(CheckInByProvider, UsesTheContextOfTheFirstUnit) {
    associate(valve, "Mill");
    checkIn(valve, pump);
    EXPECT_THAT(callsOn("SccCheckin"), ElementsAre(HasSubstr("context=2 ")));
}

TEST_F(CheckInByProvider, WithNothingToDoNotesEachUnitAndGivesOne) {
    setState(pump, 0);
    setState(valve, SCC_STATUS_CONTROLLED);
    const support::OutcomeRecorder seen;
    EXPECT_EQ(checkIn(pump, valve), 1);
    EXPECT_EQ(host.window.text(), "\n" + text(Text::fileNotControlled, {path(pump)}) + "\n\n" +
                                      text(Text::fileNotCheckedOut, {path(valve)}) + "\n");
    EXPECT_THAT(callsOn("SccCheckin"), IsEmpty());
    EXPECT_THAT(callsOn("SccAdd"), IsEmpty());
    EXPECT_THAT(host.callsOf("update "), IsEmpty());
    EXPECT_EQ(args.GetCount(), 1);
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl refused", "Valve.ocl nothingToDo"));
}

TEST_F(CheckInByProvider, TriesAFileWhoseStateIsUnknown) {
    setState(pump, 0);
    provider->answer("SccQueryInfo", SCC_E_ACCESSFAILURE);
    EXPECT_EQ(checkIn(pump), 0);
    EXPECT_THAT(callsOn("SccCheckin"), SizeIs(1));
}

TEST_F(CheckInByProvider, AddsNewUnitsFirstAndQuietly) {
    addNewUnits();
    setState(pump, 0);
    EXPECT_EQ(checkIn(pump, valve), 0);
    EXPECT_THAT(host.window.text(), HasSubstr(text(Text::fileWillBeAdded, {path(pump)})));
    EXPECT_THAT(callsOn("SccAdd"), ElementsAre(HasSubstr(" files=" + path(pump) + " ")));
    EXPECT_THAT(callsOn("SccCheckin"), ElementsAre(HasSubstr(" files=" + path(valve) + " ")));
    const auto names = ProviderFixture::entries();
    EXPECT_LT(std::ranges::find(names, "SccAdd"), std::ranges::find(names, "SccCheckin"));
    EXPECT_THAT(shownTexts(), ElementsAre(success(Text::providerHasCheckedIn)));
}

TEST_F(CheckInByProvider, AddsInATransactionOfItsOwnEvenWithoutNewUnits) {
    checkIn(pump);
    EXPECT_THAT(host.callsOf("undo"), ElementsAre("undo start flag=1", "undo end"));
    EXPECT_THAT(callsOn("SccAdd"), IsEmpty());
}

TEST_F(CheckInByProvider, OnlyNewUnitsAreAddedWithTheirMessage) {
    addNewUnits();
    setState(pump, 0);
    const support::OutcomeRecorder seen;
    EXPECT_EQ(checkIn(pump), 1);
    EXPECT_THAT(callsOn("SccAdd"), SizeIs(1));
    EXPECT_THAT(callsOn("SccCheckin"), IsEmpty());
    EXPECT_THAT(shownTexts(), ElementsAre(success(Text::providerHasAdded)));
    EXPECT_EQ(args.GetCount(), 1);
    EXPECT_EQ(seen.last().operation, CMTxnAdd);
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "modelSaved", "Pump.ocl done"));
}

TEST_F(CheckInByProvider, LeavesTheSuppressingArgumentInTheList) {
    checkIn(pump);
    ASSERT_EQ(args.GetCount(), 2);
    EXPECT_EQ(args.GetTail()->substitute("shouldSuppressSCCOKMessage"), "Yes");
    checkIn(pump);
    EXPECT_EQ(args.GetCount(), 3);
}

TEST_F(CheckInByProvider, AFailureIsShownAndAllUnitsAreUpdatedAllTheSame) {
    provider->answer("SccCheckin", SCC_E_CHECKINCONFLICT);
    setState(valve, 0);
    const support::OutcomeRecorder seen;
    EXPECT_EQ(checkIn(pump, valve), 0);
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultCheckInConflict)));
    EXPECT_THAT(host.callsOf("update header"), SizeIs(2)) << "also of the one left out";
    EXPECT_THAT(host.callsOf("update mode"), SizeIs(2));
    EXPECT_THAT(host.callsOf("set state"), SizeIs(2));
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl failed", "Valve.ocl refused"));
}

} // namespace
