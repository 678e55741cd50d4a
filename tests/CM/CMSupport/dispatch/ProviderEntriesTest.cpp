// Tests the facade's entries with a provider: form, transaction, checks, and what is passed and returned.
#include "CM/host/Utilities.h"
#include "tests/CM/CMSupport/dispatch/EntriesFixture.h"
#include "tests/CM/CMSupport/dispatch/FakeProvider.h"

#include <ostream>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// An entry with a list of units and one with a list of archive items.
template <class LIST> struct RowOf {
    std::string name;
    int (*call)(LIST &, CMArgumentList &, CMDiagnosticList &);
    std::string form; ///< of the provider; empty if there is none
    CMTranscationType type;
    bool checks = false;
    bool wantsUnits = false;
    bool onBothRoutes = false; ///< the provider form runs in a project that works by commands, too
};
using UnitRow = RowOf<CMUnitList>;
using ItemRow = RowOf<CMArchiveItemList>;
template <class LIST> void PrintTo(const RowOf<LIST> &row, std::ostream *out) { *out << row.name; }

const UnitRow unitRows[] = {
    {"CheckIn", CMFacade::CheckIn, "SCCCheckIn", CMTxnCheckIn, true, true},
    {"RecCheckIn", CMFacade::RecCheckIn, "SCCCheckIn", CMTxnCheckIn, true},
    {"CheckOut", CMFacade::CheckOut, "SCCCheckOut", CMTxnCheckOut, true, true},
    {"RecCheckOut", CMFacade::RecCheckOut, "SCCRecCheckOut", CMTxnCheckOut, true},
    {"LockItem", CMFacade::LockItem, "", CMTxnLock, true},
    {"UnLockItem", CMFacade::UnLockItem, "", CMTxnUnlock, true},
    {"Fetch", CMFacade::Fetch, "SCCFetch", CMTxnFetch, true},
    {"FetchForDiff", CMFacade::FetchForDiff, "SCCFetchForDiff", CMTxnFetch, true, false, true},
    {"History", CMFacade::History, "SCCHistory", CMTxnHistory, true, true},
    {"Properties", CMFacade::Properties, "SCCProperties", CMTxnProperties, true, false, true},
    {"Uncheckout", CMFacade::Uncheckout, "SCCUncheckout", CMTxnUndoCheckOut, true, true},
    {"RecUncheckout", CMFacade::RecUncheckout, "", CMTxnUndoCheckOut, true},
    {"AddMember", CMFacade::AddMember, "SCCAddMember", CMTxnAdd, true},
    {"MoveMember", CMFacade::MoveMember, "SCCMoveMember", CMTxnMove},
    {"DeleteMember", CMFacade::DeleteMember, "SCCDeleteMember", CMTxnDelete, true},
    {"ConnectToArchive", CMFacade::ConnectToArchive, "SCCConnectToArchive", CMTxnConnect},
};

const ItemRow itemRows[] = {
    {"CheckOutFromArchive", CMFacade::CheckOutFromArchive, "SCCCheckOutFromArchive", CMTxnCheckOut},
    {"RecCheckOutFromArchive", CMFacade::RecCheckOutFromArchive, "SCCRecCheckOutFromArchive", CMTxnCheckOut},
    {"FetchFromArchive", CMFacade::FetchFromArchive, "FetchFromArchive", CMTxnFetch},
    {"RecFetchFromArchive", CMFacade::RecFetchFromArchive, "RecFetchFromArchive", CMTxnFetch},
    {"FetchForDiffFromArc", CMFacade::FetchForDiffFromArc, "SCCFetchForDiffFromArc", CMTxnFetch, false, false,
     true},
    {"HistoryArcView", CMFacade::HistoryArcView, "SCCAltHistory", CMTxnHistory, false, false, true},
    {"ListArchive", CMFacade::ListArchive, "SCCListArchive", CMTxnListArchive},
    {"ConnectToArchive", CMFacade::ConnectToArchive, "", CMTxnConnect},
    {"Uncheckout", CMFacade::Uncheckout, "", CMTxnUndoCheckOut},
};

class ProviderEntries : public EntriesFixture {
  protected:
    ProviderEntries() { useProviderNamed("Basalt", false); }
    ~ProviderEntries() override { CMProperty::setIsLoaded(0); }

    /// Calls the entry and checks the calls of the provider.
    template <class LIST> void expectProviderForm(const RowOf<LIST> &row, LIST &given) {
        provider.result = 7;
        provider.onCall = [this, &row] {
            ASSERT_NE(CMTranscation::getCurTranscation(), nullptr);
            EXPECT_EQ(CMTranscation::getCurTranscation()->getTranscationType(), row.type);
            EXPECT_EQ(host.undo.depth, 1);
        };
        EXPECT_EQ(row.call(given, args, diags), 7);
        ASSERT_THAT(provider.entries(), ElementsAre(row.form));
        EXPECT_THAT(provider.calls[0].addresses, ElementsAre(&given, &args, &diags));
        EXPECT_THAT(host.worker.commands, IsEmpty());
        EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
    }

    FakeProvider provider;
    CMUnitList units;
    CMArchiveItemList items;
};

template <class LIST> std::string rowName(const testing::TestParamInfo<RowOf<LIST>> &info) {
    return info.param.name;
}

// --- On units.

class ProviderUnitEntries : public ProviderEntries, public testing::WithParamInterface<UnitRow> {};
INSTANTIATE_TEST_SUITE_P(Each, ProviderUnitEntries, testing::ValuesIn(unitRows), rowName<CMUnitList>);

TEST_P(ProviderUnitEntries, RunsItsFormInsideItsTransactionAndReturnsWhatThatReturned) {
    units = list(&host.addUnit("Pump"));
    if (GetParam().form.empty()) {
        GetParam().call(units, args, diags);
        EXPECT_THAT(provider.calls, IsEmpty());
    } else {
        expectProviderForm(GetParam(), units);
    }
}

TEST_P(ProviderUnitEntries, OnTheCommandRouteTheFormRunsOnlyIfThereIsNoOther) {
    setGeneral("UseSCCtool", "No");
    units = list(&host.addUnit("Pump"));
    GetParam().call(units, args, diags);
    EXPECT_EQ(provider.calls.size(), GetParam().onBothRoutes ? 1U : 0U);
}

TEST_P(ProviderUnitEntries, AListThatTheChecksHaveEmptiedEndsSomeAndTheOthersGoOn) {
    const UnitRow &row = GetParam();
    auto &reference = host.addUnit("Reference");
    reference.reference = true;
    units = list(&reference);
    provider.onCall = [this, &row] { EXPECT_EQ(units.IsEmpty(), row.checks); };
    const int result = row.call(units, args, diags);
    EXPECT_EQ(units.IsEmpty(), row.checks);
    EXPECT_EQ(provider.calls.size(), row.wantsUnits || row.form.empty() ? 0U : 1U);
    if (row.wantsUnits) {
        EXPECT_EQ(result, 0);
    }
}

TEST_P(ProviderUnitEntries, AnExceptionOfTheProviderClosesTheTransactionAndPutsTheFlagsBack) {
    isOk2All = true;
    provider.onCall = [] { throw std::runtime_error("provider"); };
    units = list(&host.addUnit("Pump"));
    if (!GetParam().form.empty()) {
        EXPECT_THROW(GetParam().call(units, args, diags), std::runtime_error);
    }
    EXPECT_TRUE(isOk2All);
    EXPECT_FALSE(reloadForDupId);
    EXPECT_EQ(host.undo.depth, 0);
    EXPECT_EQ(host.ignoringCodeGeneration, 0);
    EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
}

TEST_P(ProviderUnitEntries, OnlyFetchAndUncheckoutApplySavedUnitsBeforeTheTransactionEnds) {
    units = list(&host.addUnit("Pump"));
    provider.onCall = [this] { EXPECT_THAT(host.callsOf("apply saved units"), IsEmpty()); };
    provider.result = 0;
    GetParam().call(units, args, diags);
    if (GetParam().name == "Fetch" || GetParam().name == "Uncheckout") {
        ASSERT_GE(host.calls.size(), 2U);
        EXPECT_EQ(host.calls[host.calls.size() - 2], "apply saved units");
        EXPECT_EQ(host.calls.back(), "undo end");
    } else {
        EXPECT_THAT(host.callsOf("apply saved units"), IsEmpty());
    }
}

// --- On archive items.

class ProviderItemEntries : public ProviderEntries, public testing::WithParamInterface<ItemRow> {
  protected:
    ProviderItemEntries() {
        CMArchiveItem *entry = &item_;
        items.AddTail(entry);
    }

  private:
    CMArchiveItem item_{"Pump.ocl", "1.1", CMArchiveItem::readOnly, "", ""};
};
INSTANTIATE_TEST_SUITE_P(Each, ProviderItemEntries, testing::ValuesIn(itemRows), rowName<CMArchiveItemList>);

TEST_P(ProviderItemEntries, RunsItsFormInsideItsTransactionAndReturnsWhatThatReturned) {
    if (GetParam().form.empty()) {
        GetParam().call(items, args, diags);
        EXPECT_THAT(provider.calls, IsEmpty());
    } else {
        expectProviderForm(GetParam(), items);
    }
    EXPECT_EQ(items.GetCount(), 1);
}

TEST_P(ProviderItemEntries, OnTheCommandRouteTheFormRunsOnlyIfThereIsNoOther) {
    setGeneral("UseSCCtool", "No");
    GetParam().call(items, args, diags);
    EXPECT_EQ(provider.calls.size(), GetParam().onBothRoutes ? 1U : 0U);
}

// --- With other parameters.

TEST_F(ProviderEntries, CheckOutKeepsItsChangesFromCodeGeneration) {
    units = list(&host.addUnit("Pump"));
    provider.onCall = [this] { EXPECT_EQ(host.ignoringCodeGeneration, 1); };
    EXPECT_EQ(CMFacade::CheckOut(units, args, diags), 1);
    EXPECT_EQ(host.ignoringCodeGeneration, 0);
}

TEST_F(ProviderEntries, UncheckoutRunsUnderTheFlagsForReadingBack) {
    units = list(&host.addUnit("Pump"));
    isOk2All = true;
    provider.onCall = [] {
        EXPECT_FALSE(isOk2All);
        EXPECT_TRUE(reloadForDupId);
    };
    EXPECT_EQ(CMFacade::Uncheckout(units, args, diags), 1);
    EXPECT_EQ(provider.calls.size(), 1U);
    EXPECT_TRUE(isOk2All);
}

TEST_F(ProviderEntries, AddDirectoryPassesTheDirectoryOnAndHasNoCommand) {
    provider.result = 7;
    EXPECT_EQ(CMFacade::AddDirectory("/w/d", args, diags), 7);
    ASSERT_THAT(provider.entries(), ElementsAre("SCCAddDirectory"));
    EXPECT_THAT(provider.calls[0].texts, ElementsAre("/w/d"));
    EXPECT_THAT(provider.calls[0].addresses, ElementsAre(&args, &diags));
    setGeneral("UseSCCtool", "No");
    EXPECT_EQ(CMFacade::AddDirectory("/w/d", args, diags), 0);
    EXPECT_EQ(provider.calls.size(), 1U);
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(ProviderEntries, RenameWithinOneDirectoryStaysWithTheProviderInHybridMode) {
    useProviderNamed("Basalt", true);
    auto &pump = host.addUnit("Pump");
    provider.result = 7;
    EXPECT_EQ(CMFacade::RenameMember(&pump, "/m/Old.ocl", "/m/New.ocl", diags), 7);
    ASSERT_THAT(provider.entries(), ElementsAre("SCCRenameMember"));
    EXPECT_THAT(provider.calls[0].texts, ElementsAre("/m/Old.ocl", "/m/New.ocl"));
    EXPECT_THAT(provider.calls[0].addresses, ElementsAre(static_cast<IUnit *>(&pump), &diags));
    CMFacade::RenameMember(&pump, "/m/Old.ocl", "/n/New.ocl", diags);
    EXPECT_EQ(provider.calls.size(), 1U) << "across directories by command";
}

TEST_F(ProviderEntries, InHybridModeOneSubsystemWithADirectoryTakesMoveAndDeleteFromTheProvider) {
    useProviderNamed("Basalt", true);
    auto &pump = host.addUnit("Pump");
    auto &tanks = host.addSubsystem("Tanks");
    units = list(&pump, &tanks, &tanks);
    CMFacade::MoveMember(units, args, diags);
    CMFacade::DeleteMember(units, args, diags);
    EXPECT_THAT(provider.entries(), ElementsAre("SCCMoveMember", "SCCDeleteMember"));
    tanks.persistAs = "T";
    CMFacade::MoveMember(units, args, diags);
    CMFacade::DeleteMember(units, args, diags);
    EXPECT_EQ(provider.calls.size(), 2U);
}

TEST_F(ProviderEntries, OnlyTesseraMovesAPackagesContentAndDeletesADirectory) {
    auto &tanks = host.addSubsystem("Tanks");
    provider.result = 7;
    useProviderNamed("tESSERA", true);
    EXPECT_EQ(CMFacade::movePackageContent(&tanks, units, "/old", "/new", args, diags, true), 7);
    EXPECT_EQ(CMFacade::DeleteDirectory("/m/T", args, diags, true, &tanks), 7);
    ASSERT_THAT(provider.entries(), ElementsAre("movePackageContent", "DeleteDirectory"));
    EXPECT_THAT(provider.calls[0].texts, ElementsAre("/old", "/new", "true"));
    EXPECT_THAT(provider.calls[0].addresses, ElementsAre(static_cast<IUnit *>(&tanks), &units, &args, &diags));
    EXPECT_THAT(provider.calls[1].texts, ElementsAre("/m/T"));
    EXPECT_THAT(provider.calls[1].addresses, ElementsAre(&args, &diags));
    useProviderNamed("Basalt", true);
    CMFacade::movePackageContent(&tanks, units, "/old", "/new", args, diags, true);
    CMFacade::DeleteDirectory("/m/T", args, diags, true, &tanks);
    EXPECT_EQ(provider.calls.size(), 2U);
}

TEST_F(ProviderEntries, WithoutAProjectAskTheProviderForNothing) {
    units = list(&host.addUnit("Pump"));
    host.model.activeProject = nullptr;
    for (const UnitRow &row : unitRows) {
        EXPECT_EQ(row.call(units, args, diags), 0) << row.name;
    }
    for (const ItemRow &row : itemRows) {
        EXPECT_EQ(row.call(items, args, diags), 0) << row.name;
    }
    EXPECT_EQ(CMFacade::AddDirectory("/w/d", args, diags), 0);
    EXPECT_THAT(provider.calls, IsEmpty());
    EXPECT_EQ(units.GetCount(), 1);
}

// --- The provider's start and end.

TEST_F(ProviderEntries, SetUpReturnsWhatTheProviderReturnedAndOneWithoutAProvider) {
    for (const int result : {0, 7}) {
        provider.result = result;
        EXPECT_EQ(CMFacade::doSetUpSCC(), result);
    }
    EXPECT_THAT(provider.entries(), ElementsAre("doSetUpSCC", "doSetUpSCC"));
    setGeneral("UseSCCtool", "No");
    provider.result = 0;
    EXPECT_EQ(CMFacade::doSetUpSCC(), 1);
    EXPECT_EQ(provider.calls.size(), 2U);
    EXPECT_THAT(host.callsOf("undo"), IsEmpty()) << "no transaction";
}

TEST_F(ProviderEntries, CloseAndCleanUpCleanUpOnlyALoadedProviderAndReturnOne) {
    provider.result = 0;
    EXPECT_EQ(CMFacade::doCloseProjectSCC(), 1);
    EXPECT_EQ(CMFacade::doCleanUpSCC(), 1);
    EXPECT_THAT(provider.calls, IsEmpty());
    CMProperty::setIsLoaded(1);
    setGeneral("UseSCCtool", "No"); // the route is not asked for
    EXPECT_EQ(CMFacade::doCloseProjectSCC(), 1);
    EXPECT_EQ(CMFacade::doCleanUpSCC(), 1);
    EXPECT_THAT(provider.entries(), ElementsAre("doCleanUpSCC", "doCleanUpSCC"));
}

TEST_F(ProviderEntries, RunToolExeForwardsOnBothRoutesWithoutATransaction) {
    provider.result = 7;
    EXPECT_EQ(CMFacade::RunToolExe(), 7);
    setGeneral("UseSCCtool", "No");
    EXPECT_EQ(CMFacade::RunToolExe(), 7);
    EXPECT_THAT(provider.entries(), ElementsAre("SCCRunToolExe", "SCCRunToolExe"));
    EXPECT_THAT(host.calls, IsEmpty());
}

} // namespace
