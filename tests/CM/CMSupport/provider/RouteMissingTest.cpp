// Tests the forms that the provider route does not have yet.
#include "CM/CMSupport/provider/DeleteMemberSCC.h"
#include "CM/CMSupport/provider/MoveMemberSCC.h"
#include "CM/CMSupport/provider/SCCFacade.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

using testing::IsEmpty;

namespace {

class RouteMissing : public CoreFixture {
  protected:
    void expectReport(int result, const char *entry) {
        EXPECT_EQ(result, 0) << entry;
        ASSERT_EQ(host.messages.shown.size(), 1U) << entry;
        EXPECT_EQ(host.messages.shown[0].text, resources::text(resources::Text::providerRouteMissing)) << entry;
        EXPECT_EQ(host.messages.shown[0].flags, MB_ICONHAND) << entry;
        EXPECT_EQ(host.messages.shown[0].level, messageLevelDefault) << entry;
        host.clearRecords();
    }

    recording::Class &pump = host.addUnit("Pump");
    CMUnitList units{&pump};
    CMArchiveItemList items;
    CMArgumentList args;
    CMDiagnosticList diags;
};

TEST_F(RouteMissing, EveryFormOnUnitsReportsItAndTouchesNoList) {
    using Form = int (*)(CMUnitList &, CMArgumentList &, CMDiagnosticList &);
    const std::pair<const char *, Form> forms[] = {
        {"SCCCheckOut", SCCFacade::SCCCheckOut},         {"SCCRecCheckOut", SCCFacade::SCCRecCheckOut},
        {"SCCCheckIn", SCCFacade::SCCCheckIn},           {"SCCUncheckout", SCCFacade::SCCUncheckout},
        {"SCCAddMember", SCCFacade::SCCAddMember},       {"SCCMoveMember", SCCFacade::SCCMoveMember},
        {"SCCDeleteMember", SCCFacade::SCCDeleteMember}, {"SCCFetch", SCCFacade::SCCFetch},
        {"SCCFetchForDiff", SCCFacade::SCCFetchForDiff}, {"SCCHistory", SCCFacade::SCCHistory},
        {"SCCProperties", SCCFacade::SCCProperties}};
    for (const auto &[name, form] : forms) {
        expectReport(form(units, args, diags), name);
    }
    EXPECT_EQ(units.GetCount(), 1);
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(RouteMissing, EveryFormOnArchiveItemsReportsIt) {
    using Form = int (*)(CMArchiveItemList &, CMArgumentList &, CMDiagnosticList &);
    const std::pair<const char *, Form> forms[] = {
        {"SCCCheckOutFromArchive", SCCFacade::SCCCheckOutFromArchive},
        {"SCCRecCheckOutFromArchive", SCCFacade::SCCRecCheckOutFromArchive},
        {"FetchFromArchive", SCCFacade::FetchFromArchive},
        {"RecFetchFromArchive", SCCFacade::RecFetchFromArchive},
        {"SCCFetchForDiffFromArc", SCCFacade::SCCFetchForDiffFromArc},
        {"SCCListArchive", SCCFacade::SCCListArchive},
        {"SCCAltHistory", SCCFacade::SCCAltHistory}};
    for (const auto &[name, form] : forms) {
        expectReport(form(items, args, diags), name);
    }
    EXPECT_TRUE(items.IsEmpty());
}

TEST_F(RouteMissing, TheOtherFormsReportIt) {
    expectReport(SCCFacade::SCCAddDirectory("/w/d", args, diags), "SCCAddDirectory");
    expectReport(SCCFacade::SCCRenameMember(&pump, "/m/Old.ocl", "/m/New.ocl", diags), "SCCRenameMember");
    expectReport(MoveMemberSCC().movePackageContent(&pump, units, "/old", "/new", args, diags, false),
                 "movePackageContent");
    expectReport(DeleteMemberSCC().DeleteDirectory("/w/d", args, diags), "DeleteDirectory");
}

TEST_F(RouteMissing, TheToolOfAProviderIsNeverRun) {
    EXPECT_EQ(SCCFacade::SCCRunToolExe(), 1);
    EXPECT_THAT(host.messages.shown, IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

} // namespace
