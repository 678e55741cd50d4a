// Tests the facade's entries for fetch, history and connect.
#include "tests/CM/CMSupport/dispatch/EntriesFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class FetchEntries : public EntriesFixture {
  protected:
    FetchEntries() {
        tellTools(IPN::CMFetch, "fetch $Unit");
        tellTools(IPN::CMFetchFromArchive, "from archive $Unit");
        tellTools("History", "history $Unit");
        tellTools(IPN::CMConnectToCMRepository, "connect");
        host.setToolDefault("RCS", "PostConnectToCMRepository", "");
        CMArchiveItem *entry = &item_;
        items.AddTail(entry);
    }

    CMUnitList units = list(&host.addUnit("Pump"));
    CMArchiveItemList items;

    const Entry fetch{"Fetch", [this] { return CMFacade::Fetch(units, args, diags); }};
    const Entry fetchFromArchive{"FetchFromArchive",
                                 [this] { return CMFacade::FetchFromArchive(items, args, diags); }};
    const Entry recFetchFromArchive{"RecFetchFromArchive",
                                    [this] { return CMFacade::RecFetchFromArchive(items, args, diags); }};
    const Entry fetchForDiff{"FetchForDiff", [this] { return CMFacade::FetchForDiff(units, args, diags); }};
    const Entry history{"History", [this] { return CMFacade::History(units, args, diags); }};
    const Entry connect{"ConnectToArchive", [this] { return CMFacade::ConnectToArchive(units, args, diags); }};
    const Entry connectItems{"ConnectToArchive, items",
                             [this] { return CMFacade::ConnectToArchive(items, args, diags); }};

  private:
    CMArchiveItem item_{"Pump.ocl", "1.1", CMArchiveItem::readOnly, "", ""};
};

TEST_F(FetchEntries, RunTheirOperationOnTheCommandRoute) {
    for (const Entry &entry : {fetch, fetchFromArchive, recFetchFromArchive, history, connect}) {
        EXPECT_EQ(entry.call(), 1) << entry.name;
    }
    EXPECT_THAT(host.worker.commands,
                ElementsAre("RCS fetch Pump.ocl", "RCS from archive Pump.ocl", "RCS from archive Pump.ocl",
                            "RCS history Pump.ocl", "RCS connect"));
    EXPECT_THAT(logTexts()[2], testing::HasSubstr("to fetch the file from the archive"));
    EXPECT_THAT(logTexts()[4], testing::HasSubstr("to recursively fetch the file(s) from the archive"));
}

TEST_F(FetchEntries, OpenATransactionOfTheirType) {
    expectTransaction(fetch, CMTxnFetch);
    expectTransaction(fetchFromArchive, CMTxnFetch);
    expectTransaction(recFetchFromArchive, CMTxnFetch);
    expectTransaction(fetchForDiff, CMTxnFetch);
    expectTransaction(history, CMTxnHistory);
    expectTransaction(connect, CMTxnConnect);
    expectTransaction(connectItems, CMTxnConnect);
}

TEST_F(FetchEntries, DoNothingInAnInvalidTransaction) {
    expectNothingInAnInvalidTransaction(
        {fetch, fetchFromArchive, recFetchFromArchive, fetchForDiff, history, connect, connectItems});
    EXPECT_THAT(host.callsOf("apply saved units"), IsEmpty());
}

TEST_F(FetchEntries, AreSoundAfterAnException) {
    expectSoundAfterAnException({fetch, fetchFromArchive, recFetchFromArchive, history, connect});
}

TEST_F(FetchEntries, GoToTheProviderOnItsRouteAlsoInHybridMode) {
    useProviderNamed("Basalt", true);
    for (const Entry &entry : {fetch, fetchFromArchive, recFetchFromArchive, history}) {
        host.clearRecords();
        EXPECT_EQ(entry.call(), 0) << entry.name;
        EXPECT_TRUE(wentToProvider()) << entry.name;
    }
}

TEST_F(FetchEntries, OfAListThatTheChecksHaveEmptiedHistoryEndsAndFetchGoesOn) {
    auto &reference = host.addUnit("Reference");
    reference.reference = true;
    units = list(&reference);
    EXPECT_EQ(history.call(), 0);
    EXPECT_TRUE(units.IsEmpty());
    useProviderNamed("Basalt", false);
    host.clearRecords();
    EXPECT_EQ(history.call(), 0);
    EXPECT_EQ(providerCalls(), 0) << "ended before the route";
    units = list(&reference);
    EXPECT_EQ(fetch.call(), 0);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_EQ(providerCalls(), 1) << "went on with nothing";
    units = list(&reference);
    EXPECT_EQ(fetchForDiff.call(), 0);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_EQ(providerCalls(), 2);
}

TEST_F(FetchEntries, FetchTakesAStub) {
    auto &stub = host.addUnit("Stub");
    stub.stub = true;
    units = list(&stub);
    EXPECT_EQ(fetch.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("RCS fetch Stub.ocl"));
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(FetchEntries, ConnectTakesUnitsThatOtherOperationsAreBarredFrom) {
    auto &reference = host.addUnit("Reference");
    reference.reference = true;
    units = list(&reference);
    EXPECT_EQ(connect.call(), 1);
    EXPECT_EQ(units.GetCount(), 1);
    units.RemoveAll();
    EXPECT_EQ(connect.call(), 1) << "the units serve only to choose the archive";
}

TEST_F(FetchEntries, FetchAppliesTheReloadedUnitsBeforeItsTransactionEnds) {
    fetch.call();
    EXPECT_EQ(host.callsOf("apply saved units").size(), 1U);
    EXPECT_EQ(host.calls[host.calls.size() - 2], "apply saved units");
    EXPECT_EQ(host.calls.back(), "undo end");
}

TEST_F(FetchEntries, FetchAppliesTheReloadedUnitsOnBothRoutesAndAfterAFailure) {
    host.setToolDefault("RCS", IPN::CMFetch, "$unknown");
    EXPECT_EQ(fetch.call(), 0);
    EXPECT_EQ(host.callsOf("apply saved units").size(), 1U);
    useProviderNamed("Basalt", false);
    fetch.call();
    EXPECT_EQ(host.callsOf("apply saved units").size(), 2U);
}

TEST_F(FetchEntries, FetchInAProjectThatIsLoadedForAMergeGoesByCommandAndNotInHybridMode) {
    useProviderNamed("Basalt", true);
    project().loadedForMerge = true;
    EXPECT_EQ(fetch.call(), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("SCC fetch Pump.ocl"))
        << "not the template of the provider's name";
}

TEST_F(FetchEntries, TheOthersApplyNothing) {
    for (const Entry &entry : {fetchFromArchive, recFetchFromArchive, fetchForDiff, history, connect}) {
        entry.call();
    }
    EXPECT_THAT(host.callsOf("apply saved units"), IsEmpty());
}

TEST_F(FetchEntries, FetchForDiffGoesToTheProviderWithACommandToolToo) {
    EXPECT_EQ(fetchForDiff.call(), 0);
    EXPECT_TRUE(wentToProvider());
}

TEST_F(FetchEntries, FetchForDiffGoesByCommandOnlyInHybridModeWithBasalt) {
    const struct {
        const char *provider;
        bool hybrid;
        bool byCommand;
    } rows[] = {{"Basalt", true, true},
                {"bASALT", true, true},
                {"Basalt", false, false},
                {"Tessera", true, false},
                {"", true, false}};
    host.setToolDefault("bASALT", IPN::CMFetch, "bASALT fetch $Unit"); // the keys of this host are case-sensitive
    for (const auto &row : rows) {
        useProviderNamed(row.provider, row.hybrid);
        host.clearRecords();
        EXPECT_EQ(fetchForDiff.call(), row.byCommand ? 1 : 0) << row.provider;
        EXPECT_EQ(wentToProvider(), !row.byCommand) << row.provider;
        if (row.byCommand) {
            EXPECT_THAT(host.worker.commands, ElementsAre(CString(row.provider) + " fetch Pump.ocl"));
        }
    }
}

TEST_F(FetchEntries, FetchForDiffInHybridModeDoesNotAskForTheRoute) {
    setGeneral("UseHybridModeWhenPossible", "True");
    CMProperty::setSCCToolName("Basalt");
    EXPECT_EQ(fetchForDiff.call(), 1) << "with a plain command tool";
    EXPECT_THAT(host.worker.commands, ElementsAre("RCS fetch Pump.ocl"));
}

TEST_F(FetchEntries, ConnectWithItemsGivesZeroOnBothRoutesAndRunsNothing) {
    EXPECT_EQ(connectItems.call(), 0);
    useProviderNamed("Basalt", true);
    EXPECT_EQ(connectItems.call(), 0);
    EXPECT_EQ(providerCalls(), 0);
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_EQ(items.GetCount(), 1);
    EXPECT_TRUE(diags.IsEmpty());
}

} // namespace
