// Tests the check-out entries of the facade: transaction, checks, route.
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMTranscation.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"
#include "tests/CM/CMSupport/dispatch/FakeProvider.h"

#include <stdexcept>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class CheckOutEntries : public CheckOutFixture {
  protected:
    enum class Entry { checkOut, recCheckOut, fromArchive, recFromArchive };
    static constexpr Entry all[] = {Entry::checkOut, Entry::recCheckOut, Entry::fromArchive,
                                    Entry::recFromArchive};

    int call(Entry entry) {
        switch (entry) {
        case Entry::checkOut:
            return CMFacade::CheckOut(units, args, diags);
        case Entry::recCheckOut:
            return CMFacade::RecCheckOut(units, args, diags);
        case Entry::fromArchive:
            return CMFacade::CheckOutFromArchive(items, args, diags);
        case Entry::recFromArchive:
            return CMFacade::RecCheckOutFromArchive(items, args, diags);
        }
        throw std::logic_error("no such entry");
    }
    void fillLists() {
        units = list(&host.addUnit("Pump"));
        CMArchiveItem *entry = &item_;
        items.AddTail(entry);
    }
    /// Returns whether an operation has started: it then looks up whether to ask about writable files.
    [[nodiscard]] bool operationRan() const { return lookUpOf("AskOnCheckoutReadWrite") >= 0; }

    CMUnitList units;
    CMArchiveItemList items;

  private:
    CMArchiveItem item_{"Pump.ocl", "1.1", CMArchiveItem::readOnly, "", ""};
};

TEST_F(CheckOutEntries, RunTheirOperationInsideATransaction) {
    fillLists();
    const std::string commands[] = {"run co Pump.ocl", "run co Pump.ocl", "run coa Pump.ocl", "run coa Pump.ocl"};
    const std::string logs[] = {
        "to check out the file: ", "to recursively check out the file(s): ",
        "to check out the file from the archive: ", "to recursively check out the file(s) from the archive: "};
    for (std::size_t entry = 0; entry < 4; ++entry) {
        host.clearRecords();
        EXPECT_EQ(call(all[entry]), 1) << entry;
        EXPECT_THAT(host.calls, Contains(commands[entry]));
        EXPECT_THAT(logTexts(), Contains(HasSubstr(logs[entry])));
        EXPECT_EQ(host.callsOf("undo"), (std::vector<std::string>{"undo start flag=1", "undo end"}));
        EXPECT_EQ(host.undo.depth, 0);
        EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
    }
}

TEST_F(CheckOutEntries, WriteTheSeparatorsUnderTheNameOfTheType) {
    setGeneral("CMOperationStartSeparator", "<$Operation\n");
    setGeneral("CMOperationEndSeparator", "$Operation>\n");
    fillLists();
    const std::string name = resources::text(resources::Text::operationCheckOut);
    std::string expected;
    for (const Entry entry : all) {
        call(entry);
        expected += "<" + name + "\n" + name + ">\n";
        EXPECT_EQ(host.window.text(), expected);
    }
}

TEST_F(CheckOutEntries, CheckOutKeepsItsChangesFromCodeGenerationAroundTheTransaction) {
    fillLists();
    host.worker.run = [this](const CString &) {
        EXPECT_EQ(host.ignoringCodeGeneration, 1);
        return recording::ToolRun{};
    };
    call(Entry::checkOut);
    EXPECT_EQ(host.calls.front(), "ignore code generation start");
    EXPECT_EQ(host.calls.back(), "ignore code generation end");
    EXPECT_THAT(host.calls, Contains("undo start flag=1"));
}

TEST_F(CheckOutEntries, TheOtherEntriesLeaveCodeGenerationAlone) {
    fillLists();
    for (const Entry entry : {Entry::recCheckOut, Entry::fromArchive, Entry::recFromArchive}) {
        call(entry);
    }
    EXPECT_THAT(host.callsOf("ignore code generation"), IsEmpty());
}

TEST_F(CheckOutEntries, WithoutAProjectGiveNothingAndTouchNoList) {
    auto &pump = host.addUnit("Pump");
    units = list(&pump, &pump);
    host.model.activeProject = nullptr;
    for (const Entry entry : all) {
        EXPECT_EQ(call(entry), 0);
    }
    EXPECT_EQ(units.GetCount(), 2);
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_THAT(host.messages.shown, IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

TEST_F(CheckOutEntries, WithoutAToolTellTheUserAndGiveNoDiagnostic) {
    host.setTool("None");
    fillLists();
    for (const Entry entry : all) {
        host.clearRecords();
        EXPECT_EQ(call(entry), 0);
        ASSERT_EQ(host.messages.shown.size(), 1U);
        EXPECT_EQ(host.messages.shown[0].flags, MB_ICONHAND);
    }
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_EQ(units.GetCount(), 1);
}

TEST_F(CheckOutEntries, CheckOutOfAListThatTheChecksHaveEmptiedRunsNothing) {
    auto &pump = host.addUnit("Pump");
    pump.reference = true;
    units = list(&pump);
    EXPECT_EQ(call(Entry::checkOut), 0);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_FALSE(operationRan());
}

TEST_F(CheckOutEntries, RecursiveCheckOutGoesOnWithAnEmptyList) {
    auto &pump = host.addUnit("Pump");
    pump.reference = true;
    units = list(&pump);
    EXPECT_EQ(call(Entry::recCheckOut), 0);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_TRUE(operationRan());
}

TEST_F(CheckOutEntries, CheckOutOfAnEmptyListGivesNothingAndShowsNothing) {
    EXPECT_EQ(call(Entry::checkOut), 0);
    EXPECT_FALSE(operationRan());
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(CheckOutEntries, BarredUnitsLeaveTheCallersListAndTheOthersAreCheckedOut) {
    auto &pump = host.addUnit("Pump");
    pump.reference = true;
    auto &valve = host.addUnit("Valve");
    units = list(&pump, &valve);
    EXPECT_EQ(call(Entry::checkOut), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Valve.ocl"));
    EXPECT_THAT(entries(units), ElementsAre(&valve));
}

TEST_F(CheckOutEntries, AStubIsCheckedOut) {
    auto &pump = host.addUnit("Pump");
    pump.stub = true;
    units = list(&pump);
    EXPECT_EQ(call(Entry::checkOut), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("co Pump.ocl"));
}

TEST_F(CheckOutEntries, ArchiveFormsWithoutItemsGoOnToTheOperation) {
    EXPECT_EQ(call(Entry::fromArchive), 0);
    EXPECT_TRUE(operationRan());
    host.clearRecords();
    EXPECT_EQ(call(Entry::recFromArchive), 0);
    EXPECT_TRUE(operationRan());
}

TEST_F(CheckOutEntries, OnTheProviderRouteTellTheUserPlainlyAndRunNothing) {
    setProviderRoute();
    fillLists();
    for (const Entry entry : all) {
        host.clearRecords();
        EXPECT_EQ(call(entry), 0);
        ASSERT_THAT(host.messages.shown, Not(IsEmpty()));
        EXPECT_EQ(host.messages.shown.back().text, FakeProvider::notice);
        EXPECT_EQ(host.messages.shown.back().flags, MB_ICONHAND);
        EXPECT_EQ(host.messages.shown.back().level, messageLevelDefault);
        EXPECT_FALSE(operationRan());
        EXPECT_THAT(host.callsOf("undo"), ElementsAre("undo start flag=1", "undo end"));
    }
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(CheckOutEntries, AnExceptionClosesTheTransactionAndTheGuards) {
    fillLists();
    host.worker.run = [](const CString &) -> recording::ToolRun { throw std::runtime_error("host"); };
    for (const Entry entry : all) {
        EXPECT_THROW(call(entry), std::runtime_error);
        EXPECT_EQ(host.undo.depth, 0);
        EXPECT_EQ(host.ignoringCodeGeneration, 0);
        EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
        EXPECT_TRUE(args.IsEmpty());
    }
}

} // namespace
