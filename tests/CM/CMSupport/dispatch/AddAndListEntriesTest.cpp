// Tests the facade's entries that add to the archive and list archive and workspace.
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMTranscation.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/command/ListingFixture.h"
#include "tests/CM/CMSupport/dispatch/FakeProvider.h"

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class AddAndListEntries : public ListingFixture {
  protected:
    AddAndListEntries() {
        setToolProperty(IPN::CMAddMember, "add $Unit");
        setGeneral("CMOperationStartSeparator", "<$Operation>");
    }
    ~AddAndListEntries() override {
        for (CMArchiveItem *const item : items) {
            const std::unique_ptr<CMArchiveItem> owned(item);
        }
    }
    static std::string separator(resources::Text name) { return "<" + std::string(resources::text(name)) + ">"; }
    void expectProviderRouteMessage() {
        ASSERT_FALSE(host.messages.shown.empty());
        EXPECT_EQ(host.messages.shown.back().text, FakeProvider::notice);
        EXPECT_THAT(host.worker.commands, IsEmpty());
    }
    CMUnitList units;
    CMArchiveItemList items;
};

TEST_F(AddAndListEntries, AddMemberRunsInsideItsTransaction) {
    units = list(&host.addUnit("Pump"));
    EXPECT_EQ(CMFacade::AddMember(units, args, diags), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("add Pump.ocl"));
    EXPECT_THAT(host.callsOf("undo"), ElementsAre("undo start flag=1", "undo end"));
    EXPECT_EQ(host.window.text(), separator(resources::Text::operationAdd));
}

TEST_F(AddAndListEntries, AddMemberTakesBarredUnitsOffAndGoesOnWithAnEmptyList) {
    auto &pump = host.addUnit("Pump");
    pump.reference = true;
    units = list(&pump);
    EXPECT_EQ(CMFacade::AddMember(units, args, diags), 0);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_GE(lookUpOf("CheckOutCheckInDirectoryOnceDuringAddToArchive"), 0) << "the operation has chosen its way";
    EXPECT_THAT(host.callsOf("save model"), IsEmpty());
}

TEST_F(AddAndListEntries, AddDirectoryGivesZeroWithoutADiagnosticAfterItsTransaction) {
    EXPECT_EQ(CMFacade::AddDirectory("/w/d", args, diags), 0);
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_THAT(host.messages.shown, IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
    EXPECT_THAT(host.callsOf("undo"), ElementsAre("undo start flag=1", "undo end"));
    EXPECT_EQ(host.window.text(), separator(resources::Text::operationAddDirectory));
}

TEST_F(AddAndListEntries, ListArchiveRunsInsideItsTransaction) {
    host.worker.run = [](const CString &) { return recording::ToolRun{{"file: Pump.ocl locker: ann"}, {}, 0}; };
    EXPECT_EQ(CMFacade::ListArchive(items, args, diags), 1);
    ASSERT_EQ(items.GetCount(), 1);
    EXPECT_EQ(textOf(*items.GetHead()), "Pump.ocl||1|ann|");
    EXPECT_THAT(host.callsOf("undo"), ElementsAre("undo start flag=1", "undo end"));
    EXPECT_EQ(host.window.text(), separator(resources::Text::operationListArchive));
}

TEST_F(AddAndListEntries, OnTheProviderRouteTellTheUserAndRunNothing) {
    setProviderRoute();
    units = list(&host.addUnit("Pump"));
    EXPECT_EQ(CMFacade::AddMember(units, args, diags), 0);
    expectProviderRouteMessage();
    host.clearRecords();
    EXPECT_EQ(CMFacade::AddDirectory("/w/d", args, diags), 0);
    expectProviderRouteMessage();
    host.clearRecords();
    EXPECT_EQ(CMFacade::ListArchive(items, args, diags), 0);
    expectProviderRouteMessage();
    EXPECT_TRUE(items.IsEmpty());
}

TEST_F(AddAndListEntries, WithoutAProjectGiveZeroAndTouchNoList) {
    units = list(&host.addUnit("Pump"));
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMFacade::AddMember(units, args, diags), 0);
    EXPECT_EQ(CMFacade::AddDirectory("/w/d", args, diags), 0);
    EXPECT_EQ(CMFacade::ListArchive(items, args, diags), 0);
    EXPECT_EQ(units.GetCount(), 1);
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(AddAndListEntries, ListWorkspaceOpensNoTransactionAndTakesNoRoute) {
    setProviderRoute();
    host.model.repositoryFiles.RemoveAll();
    auto &pump = host.addUnit("Pump");
    host.lookups.clear();
    EXPECT_EQ(CMFacade::ListWorkspace(units, args, diags), 1);
    EXPECT_THAT(entries(units), ElementsAre(&pump));
    EXPECT_THAT(host.calls, IsEmpty());
    EXPECT_THAT(host.lookups, IsEmpty());
    EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr);
}

} // namespace
