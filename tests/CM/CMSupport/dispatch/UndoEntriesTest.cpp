// Tests the facade's entries that undo check outs: transaction, checks, route, and the host's flags for reading
// back.
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMTranscation.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "CM/host/Utilities.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"
#include "tests/CM/CMSupport/dispatch/FakeProvider.h"

#include <stdexcept>

using resources::Text;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class UndoEntries : public CheckOutFixture {
  protected:
    enum class Entry { units, items, recursive };
    static constexpr Entry all[] = {Entry::units, Entry::items, Entry::recursive};

    UndoEntries() { setToolProperty(IPN::CMUnLockItem, "unco $Unit"); }
    int call(Entry entry) {
        switch (entry) {
        case Entry::units:
            return CMFacade::Uncheckout(units, args, diags);
        case Entry::items:
            return CMFacade::Uncheckout(items, args, diags);
        case Entry::recursive:
            return CMFacade::RecUncheckout(units, args, diags);
        }
        throw std::logic_error("no such entry");
    }
    recording::Class &fillLists() {
        auto &pump = host.addUnit("Pump");
        units = list(&pump);
        CMArchiveItem *entry = &item_;
        items.AddTail(entry);
        return pump;
    }

    CMUnitList units;
    CMArchiveItemList items;

  private:
    CMArchiveItem item_{"Pump.ocl", "1.1", CMArchiveItem::readOnly, "", ""};
};

TEST_F(UndoEntries, RunTheirOperationInsideATransaction) {
    fillLists();
    const std::string logs[] = {"to uncheck out the file: ", "to uncheck out the file from the archive: ",
                                "to recursively uncheck out the file(s): "};
    for (std::size_t entry = 0; entry < 3; ++entry) {
        host.clearRecords();
        EXPECT_EQ(call(all[entry]), 1) << entry;
        EXPECT_THAT(host.worker.commands, ElementsAre("unco Pump.ocl"));
        EXPECT_THAT(logTexts(), Contains(HasSubstr(logs[entry])));
        EXPECT_THAT(host.callsOf("undo"), ElementsAre("undo start flag=1", "undo end"));
        EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
        expectNothingIsLeft();
    }
}

TEST_F(UndoEntries, WriteTheSeparatorsUnderTheNameOfTheType) {
    setGeneral("CMOperationStartSeparator", "<$Operation\n");
    setGeneral("CMOperationEndSeparator", "$Operation>\n");
    fillLists();
    const std::string name = resources::text(Text::operationUndoCheckOut);
    std::string expected;
    for (const Entry entry : all) {
        call(entry);
        expected += "<" + name + "\n" + name + ">\n";
        EXPECT_EQ(host.window.text(), expected);
    }
}

// --- The host's flags.

TEST_F(UndoEntries, BothFormsOfUncheckoutSetTheHostsFlagsForTheirLength) {
    fillLists();
    host.worker.run = [](const CString &) {
        EXPECT_FALSE(isOk2All);
        EXPECT_TRUE(reloadForDupId);
        return recording::ToolRun{};
    };
    for (const Entry entry : {Entry::units, Entry::items}) {
        isOk2All = true;
        reloadForDupId = false;
        EXPECT_EQ(call(entry), 1);
        EXPECT_TRUE(isOk2All);
        EXPECT_FALSE(reloadForDupId);
        isOk2All = false;
        reloadForDupId = true;
        EXPECT_EQ(call(entry), 1);
        EXPECT_FALSE(isOk2All);
        EXPECT_TRUE(reloadForDupId);
    }
}

TEST_F(UndoEntries, TheFlagsAreSetBeforeTheTransactionOpensAndReturnAfterItHasClosed) {
    fillLists();
    int seen = 0;
    host.undo.onStart = host.undo.onEnd = [&seen] {
        ++seen;
        EXPECT_FALSE(isOk2All);
        EXPECT_TRUE(reloadForDupId);
    };
    for (const Entry entry : {Entry::units, Entry::items}) {
        isOk2All = true;
        reloadForDupId = false;
        call(entry);
        EXPECT_TRUE(isOk2All);
        EXPECT_FALSE(reloadForDupId);
    }
    EXPECT_EQ(seen, 4);
}

TEST_F(UndoEntries, TheFlagsReturnAfterAnExceptionToo) {
    fillLists().onUpdateHeader = [](recording::UnitState &) { throw std::runtime_error("host"); };
    isOk2All = true;
    EXPECT_THROW(call(Entry::units), std::runtime_error);
    EXPECT_TRUE(isOk2All);
    EXPECT_FALSE(reloadForDupId);
    host.worker.run = [](const CString &) -> recording::ToolRun { throw std::runtime_error("host"); };
    EXPECT_THROW(call(Entry::items), std::runtime_error);
    EXPECT_TRUE(isOk2All);
    EXPECT_FALSE(reloadForDupId);
    EXPECT_EQ(host.undo.depth, 0);
    EXPECT_TRUE(args.IsEmpty());
}

TEST_F(UndoEntries, TheFlagsReturnWhenTheTransactionIsNotValid) {
    host.model.activeProject = nullptr;
    isOk2All = true;
    EXPECT_EQ(call(Entry::units), 0);
    EXPECT_EQ(call(Entry::items), 0);
    EXPECT_TRUE(isOk2All);
    EXPECT_FALSE(reloadForDupId);
}

TEST_F(UndoEntries, TheRecursiveFormLeavesTheFlagsAlone) {
    fillLists();
    isOk2All = true;
    host.worker.run = [](const CString &) {
        EXPECT_TRUE(isOk2All);
        EXPECT_FALSE(reloadForDupId);
        return recording::ToolRun{};
    };
    EXPECT_EQ(call(Entry::recursive), 1);
}

// --- Reloaded units and other projects.

TEST_F(UndoEntries, OfUnitsAppliesTheReloadedUnitsBeforeTheTransactionEnds) {
    auto &pump = fillLists();
    host.reload.canReload = [](const IUnit *, int) { return false; };
    host.reload.addToModel = [&pump](const CString &, const CString &, int) { return &pump; };
    EXPECT_EQ(call(Entry::units), 1);
    const auto place = [this](const std::string &call) { return std::ranges::find(host.calls, call); };
    EXPECT_LT(place("add to saved units Pump"), place("apply saved units"));
    EXPECT_LT(place("reloads close"), place("apply saved units"));
    EXPECT_LT(place("apply saved units"), place("undo end"));
    EXPECT_EQ(host.callsOf("apply saved units").size(), 1U);
}

TEST_F(UndoEntries, OfUnitsAppliesThemAlsoAfterAFailureAndOnTheProviderRoute) {
    fillLists();
    setToolProperty(IPN::CMUnLockItem, "unco $nowhere");
    EXPECT_EQ(call(Entry::units), 0);
    EXPECT_EQ(host.callsOf("apply saved units").size(), 1U);
    setProviderRoute();
    EXPECT_EQ(call(Entry::units), 0);
    EXPECT_EQ(host.callsOf("apply saved units").size(), 2U);
}

TEST_F(UndoEntries, TheOtherFormsApplyNothing) {
    fillLists();
    call(Entry::items);
    call(Entry::recursive);
    EXPECT_THAT(host.callsOf("apply saved units"), IsEmpty());
}

// --- Checks.

TEST_F(UndoEntries, OfUnitsThatTheChecksHaveEmptiedRunsAndAppliesNothing) {
    fillLists().reference = true;
    EXPECT_EQ(call(Entry::units), 0);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_THAT(host.callsOf("reloads"), IsEmpty());
    EXPECT_THAT(host.callsOf("apply saved units"), IsEmpty());
}

TEST_F(UndoEntries, TheRecursiveFormGoesOnWithTheEmptiedListAndSucceeds) {
    fillLists().reference = true;
    EXPECT_EQ(call(Entry::recursive), 1);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(UndoEntries, BarredUnitsLeaveTheCallersList) {
    for (const Entry entry : {Entry::units, Entry::recursive}) {
        auto &valve = host.addUnit("Valve");
        auto &barred = host.addUnit("Pump");
        barred.reference = true;
        units = list(&barred, &valve);
        host.clearRecords();
        EXPECT_EQ(call(entry), 1);
        EXPECT_THAT(host.worker.commands, ElementsAre("unco Valve.ocl"));
        EXPECT_THAT(entries(units), ElementsAre(&valve));
    }
}

TEST_F(UndoEntries, TheItemFormGoesOnWithoutItems) {
    EXPECT_EQ(call(Entry::items), 0);
    const auto toolQuestions = [this] {
        return std::ranges::count(host.lookups, IPN::CMTool,
                                  [](const recording::Lookup &lookup) { return lookup.property.key; });
    };
    const std::ptrdiff_t ofItems = toolQuestions();
    host.lookups.clear();
    EXPECT_EQ(call(Entry::units), 0);
    EXPECT_GT(ofItems, toolQuestions()) << "only the operation itself asks once more";
    host.clearRecords();
    EXPECT_EQ(call(Entry::items), 0);
    EXPECT_THAT(host.callsOf("undo"), ElementsAre("undo start flag=1", "undo end"));
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(UndoEntries, WithoutAProjectGiveNothingAndTouchNoList) {
    auto &pump = fillLists();
    units.AddTail(&pump);
    host.model.activeProject = nullptr;
    for (const Entry entry : all) {
        EXPECT_EQ(call(entry), 0);
    }
    EXPECT_EQ(units.GetCount(), 2);
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(UndoEntries, WithoutAToolTellTheUserAndGiveNoDiagnostic) {
    host.setTool("None");
    fillLists();
    for (const Entry entry : all) {
        host.clearRecords();
        EXPECT_EQ(call(entry), 0);
        ASSERT_EQ(host.messages.shown.size(), 1U);
    }
    EXPECT_TRUE(diags.IsEmpty());
}

// --- The provider route.

TEST_F(UndoEntries, OnTheProviderRouteOfUnitsTellsTheUserAndRunsNothing) {
    setProviderRoute();
    fillLists();
    EXPECT_EQ(call(Entry::units), 0);
    ASSERT_FALSE(host.messages.shown.empty());
    EXPECT_EQ(host.messages.shown.back().text, FakeProvider::notice);
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(UndoEntries, OnTheProviderRouteTheItemFormRunsItsCommandAllTheSame) {
    setProviderRoute();
    host.setToolDefault("SCC", IPN::CMUnLockItem, "unco all");
    fillLists();
    EXPECT_EQ(call(Entry::items), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco all"));
}

TEST_F(UndoEntries, OnTheProviderRouteTheRecursiveFormGivesNothingAndSaysNothing) {
    setProviderRoute();
    host.setToolDefault("SCC", IPN::CMUnLockItem, "unco all");
    fillLists();
    CMProperty::useSccCompliantTool(); // without a provider the user gets one message, at the first look-up
    host.clearRecords();
    EXPECT_EQ(call(Entry::recursive), 0);
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_THAT(host.messages.shown, IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_THAT(host.callsOf("undo"), ElementsAre("undo start flag=1", "undo end"));
}

} // namespace
