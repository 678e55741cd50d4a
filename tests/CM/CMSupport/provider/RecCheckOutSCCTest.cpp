// Tests the recursive check out through the provider, and those from the archive.
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

constexpr auto noComment = " comment= flags=0 options=null";

class UnitsFixture : public OperationFixture {
  protected:
    recording::Class &pump = host.addUnit("Pump");
    recording::Class &valve = host.addUnit("Valve");
    CMUnitList units;
};

class RecCheckOutByProvider : public UnitsFixture {
  protected:
    int checkOut(CMUnitList given) {
        units = std::move(given);
        return SCCFacade::SCCRecCheckOut(units, args, diags);
    }
};

TEST_F(RecCheckOutByProvider, AsksForEachFileCallsOnceAndUpdatesTheStates) {
    host.setToolDefault("SCC", IPN::CMSaveOnCheckOut, "False");
    setState(pump, 3);
    EXPECT_EQ(checkOut(list(&pump, &valve)), 0);
    const std::string both = path(pump) + "," + path(valve);
    EXPECT_THAT(effects(),
                ElementsAreArray(joined(
                    {logged("Getting SCC Context to perform check out"),
                     queried(path(pump), false),
                     queried(path(valve), false),
                     called("SccCheckout", {path(pump), path(valve)}, noComment, false),
                     logged("Updating CM Status for checked out units"),
                     {"log: Invoking SccQueryInfo on Scc dll for the following files:\n\t" + path(pump) + "\n",
                      "provider SccQueryInfo context=1 files=" + both, "log: Scc dll returned 0 from SccQueryInfo",
                      "set state Pump 3", "log: Status of Class Pump is 3", "set state Valve 1",
                      "log: Status of Class Valve is 1"}})));
}

TEST_F(RecCheckOutByProvider, OfNothingWarnsOnly) {
    EXPECT_EQ(checkOut(CMUnitList()), 0);
    EXPECT_THAT(effects(), ElementsAre("ask 48: " + text(Text::nothingSelected)));
}

TEST_F(RecCheckOutByProvider, SavesWithoutThePropertyTooAndLeavesTheRequest) {
    checkOut(list(&pump));
    EXPECT_EQ(effects().front(), "save model");
    EXPECT_EQ(CMProperty::saveOnCheckout(-1), 1);
    forget();
    CMProperty::saveOnCheckout(0);
    checkOut(list(&pump));
    EXPECT_THAT(effects(), Not(Contains("save model")));
}

TEST_F(RecCheckOutByProvider, TakesTheCommentByTheNameLabel) {
    CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(1);
    EchoArgument first("first");
    args = {&first};
    checkOut(list(&pump));
    EXPECT_THAT(callsOn("SccCheckout").back(), HasSubstr(" comment=first:label flags"));
}

TEST_F(RecCheckOutByProvider, LeavesFilesOutOfDateOutAndWarns) {
    setState(pump, SCC_STATUS_CONTROLLED | SCC_STATUS_OUTOFDATE);
    const support::OutcomeRecorder seen;
    checkOut(list(&pump, &valve));
    EXPECT_THAT(callsOn("SccCheckout"), ElementsAre("context=1 window=null files=" + path(valve) + noComment));
    EXPECT_THAT(effects(), Contains("notify: " + text(Text::outOfDateLeftOut)));
    EXPECT_EQ(host.messages.shown[0].level, messageLevelDefault);
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl refused", "Valve.ocl done"));
}

TEST_F(RecCheckOutByProvider, AsksAboutTheFullNameAndChecksThePathOut) {
    pump.fullFileName = "/elsewhere/Pump.ocl";
    checkOut(list(&pump));
    EXPECT_THAT(provider->calls[0], HasSubstr("SccQueryInfo context=1 files=/elsewhere/Pump.ocl"));
    EXPECT_THAT(callsOn("SccCheckout")[0], HasSubstr(" files=" + unitsDirectory().string() + "/Pump.ocl "));
}

TEST_F(RecCheckOutByProvider, ANullEntryTakesUpAPlaceAndADuplicateIsCheckedOutTwice) {
    checkOut(list(&pump, static_cast<IUnit *>(nullptr), &pump));
    EXPECT_THAT(callsOn("SccCheckout")[0], HasSubstr(" files=" + path(pump) + ",," + path(pump) + " "));
}

TEST_F(RecCheckOutByProvider, LeavesCheckedOutAndWantedFilesAlone) {
    makeFile(pump);
    setState(pump, SCC_STATUS_CHECKEDOUT);
    makeWritable(valve);
    CCMSyncQuestionDlg::m_response = "notoall";
    const support::OutcomeRecorder seen;
    checkOut(list(&pump, &valve));
    EXPECT_EQ(shown.str(), text(Text::fileCheckedOut, {path(pump)}) + "\n");
    EXPECT_THAT(callsOn("SccCheckout"), ElementsAre(std::string("context=1 window=null files=") + noComment));
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl nothingToDo", "Valve.ocl declined"));
}

TEST_F(RecCheckOutByProvider, AFailureIsShownAndUpdatesNoState) {
    provider->answer("SccCheckout", SCC_E_FILEISLOCKED);
    const support::OutcomeRecorder seen;
    checkOut(list(&pump));
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultFileLocked)));
    EXPECT_THAT(host.callsOf("set state"), IsEmpty());
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl failed"));
}

TEST_F(RecCheckOutByProvider, UsesTheContextOfTheFirstUnitAndEndsWithoutOne) {
    associate(valve, "Mill");
    checkOut(list(&valve, &pump));
    EXPECT_THAT(callsOn("SccCheckout"), ElementsAre(HasSubstr("context=2 ")));
    disconnect();
    provider->calls.clear();
    checkOut(list(&pump));
    EXPECT_THAT(provider->calls, IsEmpty());
}

// --- From the archive.

class ItemsFixture : public UnitsFixture {
  protected:
    ItemsFixture() { useContextOfItems(); }
    void addItem(const std::string &file) {
        items.addTail(new CMArchiveItem(file, "", CMArchiveItem::readOnly, "", ""));
    }
    [[nodiscard]] std::string inUnits(const std::string &name) const { return unitsDirectory() / name; }
    CMArchiveItemListWrapper items;
};

class CheckOutFromArchiveByProvider : public ItemsFixture {
  protected:
    int checkOut() { return SCCFacade::SCCCheckOutFromArchive(items.list(), args, diags); }
};

TEST_F(CheckOutFromArchiveByProvider, AsksCallsAndReloadsEachItem) {
    addItem(path(pump));
    CMArchiveItem *none = nullptr;
    items.list().AddTail(none);
    addItem(path(valve));
    EXPECT_EQ(checkOut(), 0);
    EXPECT_THAT(effects(), ElementsAreArray(joined({{"reloads open"},
                                                    queried(path(pump)),
                                                    called("SccCheckout", {path(pump)}, noComment),
                                                    reloaded(pump),
                                                    queried(path(valve)),
                                                    called("SccCheckout", {path(valve)}, noComment),
                                                    reloaded(valve),
                                                    {"reloads close"}})));
    EXPECT_TRUE(args.IsEmpty());
}

TEST_F(CheckOutFromArchiveByProvider, SavesAlsoWithoutItemsButCallsNoCallback) {
    host.setToolDefault("SCC", IPN::CMSaveOnCheckOut, "True");
    checkOut();
    EXPECT_THAT(effects(), ElementsAre("save model"));
}

TEST_F(CheckOutFromArchiveByProvider, TheArchiveAnswersForTheCommentIfThereIsNoOtherArgument) {
    CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(1);
    addItem(path(pump));
    checkOut();
    EXPECT_THAT(callsOn("SccCheckout").back(), HasSubstr(" comment=label flags"));
}

TEST_F(CheckOutFromArchiveByProvider, AFailureIsNotShownAndTheNextItemsFollow) {
    int call = 0;
    provider->answers["SccCheckout"] = [&call] { return ++call == 1 ? SCC_E_FILEISLOCKED : SCC_OK; };
    addItem(path(pump));
    addItem(path(valve));
    const support::OutcomeRecorder seen;
    checkOut();
    EXPECT_THAT(shownTexts(), IsEmpty());
    EXPECT_THAT(reloads(), ElementsAre("reload Valve flag=0"));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl failed", "Valve.ocl done"));
}

TEST_F(CheckOutFromArchiveByProvider, AnItemWithoutAUnitIsNotAskedAboutAndIsLoaded) {
    const std::string file = inUnits("New.ocl");
    write(file, "text");
    CCMSyncQuestionDlg::m_response = "notoall";
    addItem(file);
    checkOut();
    EXPECT_THAT(callsOn("SccCheckout"), SizeIs(1));
    EXPECT_THAT(effects(), Contains("add to model New.ocl flag=0"));
}

TEST_F(CheckOutFromArchiveByProvider, AsksAboutAWritableFileOfAUnit) {
    makeWritable(pump);
    CCMSyncQuestionDlg::m_response = "notoall";
    addItem(path(pump));
    checkOut();
    EXPECT_THAT(callsOn("SccCheckout"), IsEmpty());
}

TEST_F(CheckOutFromArchiveByProvider, LeavesACheckedOutFileAlone) {
    makeFile(pump);
    setState(pump, SCC_STATUS_OUTBYUSER);
    addItem(path(pump));
    checkOut();
    EXPECT_THAT(callsOn("SccCheckout"), IsEmpty());
    EXPECT_EQ(shown.str(), text(Text::fileCheckedOut, {path(pump)}) + "\n");
}

TEST_F(CheckOutFromArchiveByProvider, AUnitInAnotherDirectoryIsLoadedInsteadOfReloaded) {
    addItem(path(pump));
    pump.directory = "/elsewhere";
    checkOut();
    EXPECT_THAT(effects(), Contains("add to model Pump.ocl flag=0"));
    EXPECT_THAT(host.callsOf("reload Pump"), IsEmpty());
}

TEST_F(CheckOutFromArchiveByProvider, AFileThatCannotBeLoadedIsReported) {
    host.setToolDefault("SCC", "ReportLoadingError", "Message Box");
    host.reload.reloadUnit = [](IUnit *, int) { return nullptr; };
    addItem(path(pump));
    const support::OutcomeRecorder seen;
    checkOut();
    EXPECT_THAT(shownTexts(), ElementsAre(text(Text::loadingFailed, {path(pump)})));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl notLoaded"));
}

TEST_F(CheckOutFromArchiveByProvider, AnEmbeddedFileIsNotLoaded) {
    addItem(inUnits("Notes.doc"));
    checkOut();
    EXPECT_THAT(callsOn("SccCheckout"), SizeIs(1));
    EXPECT_THAT(host.callsOf("add to model"), IsEmpty());
}

TEST_F(CheckOutFromArchiveByProvider, WithoutAListingRunsWithANullContext) {
    CMProperty::setPvContext(nullptr);
    addItem(path(pump));
    checkOut();
    EXPECT_THAT(callsOn("SccCheckout"), ElementsAre(HasSubstr("context=0 ")));
}

class RecCheckOutFromArchiveByProvider : public ItemsFixture {
  protected:
    int checkOut() { return SCCFacade::SCCRecCheckOutFromArchive(items.list(), args, diags); }
};

TEST_F(RecCheckOutFromArchiveByProvider, AsksForEachItemAndCallsOnce) {
    addItem(path(pump));
    addItem(path(valve));
    EXPECT_EQ(checkOut(), 0);
    EXPECT_THAT(effects(),
                ElementsAreArray(joined({queried(path(pump)), queried(path(valve)),
                                         called("SccCheckout", {path(pump), path(valve)}, noComment)})));
}

TEST_F(RecCheckOutFromArchiveByProvider, OfNothingWarnsOnly) {
    checkOut();
    EXPECT_THAT(effects(), ElementsAre("ask 48: " + text(Text::nothingSelected)));
}

TEST_F(RecCheckOutFromArchiveByProvider, SavesOnceIfThePropertyAsksForIt) {
    addItem(path(pump));
    checkOut();
    EXPECT_THAT(effects(), Not(Contains("save model"))) << "not without the property";
    host.setToolDefault("SCC", IPN::CMSaveOnCheckOut, "True");
    checkOut();
    checkOut();
    EXPECT_EQ(std::ranges::count(effects(), "save model"), 1);
    EXPECT_EQ(CMProperty::saveOnCheckout(-1), 0);
}

TEST_F(RecCheckOutFromArchiveByProvider, ShowsAFailureUnlessAFileWasOutOfDate) {
    provider->answer("SccCheckout", SCC_E_FILEISLOCKED);
    addItem(path(pump));
    addItem(path(valve));
    checkOut();
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultFileLocked)));
    forget();
    setState(pump, SCC_STATUS_OUTOFDATE);
    const support::OutcomeRecorder seen;
    checkOut();
    EXPECT_THAT(shownTexts(), ElementsAre(text(Text::outOfDateLeftOut)));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl refused", "Valve.ocl failed"));
}

} // namespace
