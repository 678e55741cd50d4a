// Tests adding units and directories through the provider.
#include "CM/CMSupport/provider/AddMemberSCC.h"

#include "CM/CMSupport/core/CMSuppressOKMessage.h"
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

class AddByProvider : public OperationFixture {
  protected:
    AddByProvider() {
        provider->otherState = 0;
        args = {&first};
    }
    int add(CMUnitList given) {
        units = std::move(given);
        return SCCFacade::SCCAddMember(units, args, diags);
    }
    void useOneCall() { setProviderProperty("UnrollLoops", "True"); }
    [[nodiscard]] std::ptrdiff_t successes() const {
        return std::ranges::count(shownTexts(), success(Text::providerHasAdded));
    }

    EchoArgument first{"first"};
    CMSuppressOKMessage suppressing{"yES"};
    recording::Class &pump = host.addUnit("Pump");
    recording::Class &valve = host.addUnit("Valve");
    CMUnitList units;
};

TEST_F(AddByProvider, SavesAsksCallsAndUpdatesInThisOrder) {
    EXPECT_EQ(add(list(&pump)), 1);
    EXPECT_THAT(effects(), ElementsAreArray(joined(
                               {{"save model"},
                                logged("Getting SCC Context for " + path(pump) + "to perform Add To Archive"),
                                queried(path(pump)),
                                called("SccAdd", {path(pump)}, " comment=first:log flags=0 options=null"),
                                allUpdated(pump, 0),
                                {"ask 64: " + success(Text::providerHasAdded)}})));
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(AddByProvider, OfNothingGivesOneAndDoesNothing) {
    EXPECT_EQ(add(CMUnitList()), 1);
    EXPECT_THAT(effects(), IsEmpty());
}

TEST_F(AddByProvider, MakesACallForEachUnitThatIsNotNull) {
    add(list(&pump, static_cast<IUnit *>(nullptr), &valve));
    EXPECT_THAT(callsOn("SccAdd"), ElementsAre(HasSubstr(path(pump)), HasSubstr(path(valve))));
    EXPECT_EQ(successes(), 1);
}

TEST_F(AddByProvider, WithoutAContextGivesZero) {
    disconnect();
    EXPECT_EQ(add(list(&pump, &valve)), 0);
    useOneCall();
    EXPECT_EQ(add(list(&pump, &valve)), 0);
    EXPECT_THAT(provider->calls, IsEmpty());
}

TEST_F(AddByProvider, WithoutAnArgumentHasAnEmptyComment) {
    args.RemoveAll();
    add(list(&pump));
    EXPECT_THAT(callsOn("SccAdd").back(), HasSubstr(" comment= flags"));
}

TEST_F(AddByProvider, TheSecondArgumentSuppressesTheClosingMessageOnly) {
    args = {&first, &suppressing};
    add(list(&pump));
    EXPECT_EQ(successes(), 0);
    setGeneral("AddToArchiveConfirm", "True");
    add(list(&pump));
    EXPECT_EQ(successes(), 1);
    forget();
    setGeneral("AddToArchiveConfirm", "False");
    args = {&suppressing, &first};
    add(list(&pump));
    EXPECT_EQ(successes(), 1) << "not the second";
}

TEST_F(AddByProvider, ConfirmsEachCallInsteadOfTheEndIfTheProjectWantsThat) {
    setGeneral("AddToArchiveConfirm", "True");
    add(list(&pump, &valve));
    EXPECT_EQ(successes(), 2);
}

TEST_F(AddByProvider, LeavesAControlledFileOutOnlyIfTheProjectWantsThat) {
    setState(pump, SCC_STATUS_CONTROLLED);
    add(list(&pump));
    EXPECT_THAT(callsOn("SccAdd"), SizeIs(1));
    setProviderProperty("IgnoreAddToArchiveForExistingUnits", "True");
    const support::OutcomeRecorder seen;
    add(list(&pump, &valve));
    EXPECT_THAT(callsOn("SccAdd"), SizeIs(2));
    EXPECT_EQ(host.window.text(), "\n" + text(Text::fileInArchive, {path(pump)}) + "\n");
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl nothingToDo", "Valve.ocl done"));
    provider->answer("SccQueryInfo", SCC_E_ACCESSFAILURE);
    add(list(&pump));
    EXPECT_THAT(callsOn("SccAdd"), SizeIs(3)) << "a failed query";
}

TEST_F(AddByProvider, AFailureIsShownAndTheUpdatesAndTheOtherUnitsFollow) {
    int call = 0;
    provider->answers["SccAdd"] = [&call] { return ++call == 1 ? SCC_E_FILEALREADYEXISTS : SCC_OK; };
    const support::OutcomeRecorder seen;
    EXPECT_EQ(add(list(&pump, &valve)), 1);
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultFileExists), success(Text::providerHasAdded)));
    EXPECT_THAT(host.callsOf("update header"), SizeIs(2));
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl failed", "Valve.ocl done"));
    provider->answer("SccAdd", SCC_E_FILEALREADYEXISTS);
    forget();
    EXPECT_EQ(add(list(&pump)), 1);
    EXPECT_EQ(successes(), 0);
}

TEST_F(AddByProvider, InOneCallUsesTheContextOfTheProject) {
    useOneCall();
    associate(pump, "Mill");
    EXPECT_EQ(add(list(&pump, &valve)), 1);
    EXPECT_THAT(effects(), ElementsAreArray(joined({{"save model"},
                                                    logged("Getting SCC Context to perform Add To Archive"),
                                                    queried(path(pump)),
                                                    queried(path(valve)),
                                                    called("SccAdd", {path(pump), path(valve)},
                                                           " comment=first:log flags=0,0 options=null"),
                                                    allUpdated(pump, 0),
                                                    allUpdated(valve, 0),
                                                    {"ask 64: " + success(Text::providerHasAdded)}})));
}

TEST_F(AddByProvider, InOneCallWithAllFilesLeftOutCallsNothing) {
    useOneCall();
    setProviderProperty("IgnoreAddToArchiveForExistingUnits", "True");
    provider->otherState = SCC_STATUS_CONTROLLED;
    EXPECT_EQ(add(list(&pump, &valve)), 1);
    EXPECT_THAT(callsOn("SccAdd"), IsEmpty());
    EXPECT_THAT(shownTexts(), IsEmpty());
    EXPECT_THAT(host.callsOf("update "), IsEmpty());
}

TEST_F(AddByProvider, GivesThePathWithSingleBackslashesButAsksWithDoubledOnes) {
    pump.directory = "\\\\server\\models";
    add(list(&pump));
    EXPECT_THAT(provider->calls[0], HasSubstr("files=\\\\server\\models/Pump.ocl"));
    EXPECT_THAT(callsOn("SccAdd")[0], HasSubstr("files=\\server\\models/Pump.ocl"));
}

TEST_F(AddByProvider, ADirectoryIsGivenWithASeparatorAtItsEnd) {
    const support::OutcomeRecorder seen;
    EXPECT_EQ(SCCFacade::SCCAddDirectory("/w/d", args, diags), 1);
    EXPECT_THAT(effects(), ElementsAreArray(
                               joined({logged("Getting SCC Context to perform Add To Archive"),
                                       {"save model"},
                                       called("SccAdd", {"/w/d/"}, " comment=first:log flags=0 options=null")})));
    EXPECT_EQ(SCCFacade::SCCAddDirectory("/w/d/", args, diags), 1);
    EXPECT_THAT(callsOn("SccAdd").back(), HasSubstr(" files=/w/d/ "));
    EXPECT_EQ(seen.last().file, "/w/d/");
}

TEST_F(AddByProvider, ADirectoryThatFailsGivesZeroAndTheMessage) {
    provider->answer("SccAdd", SCC_E_NOTAUTHORIZED);
    const support::OutcomeRecorder seen;
    EXPECT_EQ(SCCFacade::SCCAddDirectory("/w/d", args, diags), 0);
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultNotAuthorized)));
    EXPECT_EQ(seen.last().kind, CMOutcome::Kind::failed);
    disconnect();
    provider->calls.clear();
    EXPECT_EQ(SCCFacade::SCCAddDirectory("/w/d", args, diags), 0);
    EXPECT_THAT(provider->calls, IsEmpty());
}

} // namespace
