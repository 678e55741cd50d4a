// Tests the check out of units through the provider.
#include "CM/CMSupport/provider/CheckOutSCC.h"

#include "CM/CMSupport/provider/SCCFacade.h"
#include "tests/CM/CMSupport/provider/OperationFixture.h"

#include <set>

using resources::Text;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

namespace {

constexpr auto noComment = " comment= flags=0 options=null";

class CheckOutByProvider : public OperationFixture {
  protected:
    explicit CheckOutByProvider(const std::string &library = DOUBLE_PROVIDER) : OperationFixture(library) {}
    template <class... UNITS> int checkOut(UNITS &...given) {
        units = list(&given...);
        return SCCFacade::SCCCheckOut(units, args, diags);
    }
    void useOneCall() { setProviderProperty("UnrollLoops", "True"); }

    recording::Class &pump = host.addUnit("Pump");
    recording::Class &valve = host.addUnit("Valve");
    recording::Class &tank = host.addUnit("Tank");
    CMUnitList units;
};

TEST_F(CheckOutByProvider, AsksCallsReloadsAndUpdatesInThisOrder) {
    EXPECT_EQ(checkOut(pump), 0);
    const std::string file = path(pump);
    EXPECT_THAT(effects(), ElementsAreArray(joined({{"reloads open"},
                                                    logged("Getting SCC Context to perform check out"),
                                                    queried(file),
                                                    called("SccCheckout", {file}, noComment),
                                                    reloaded(pump),
                                                    {"reloads close"},
                                                    modeUpdated(pump),
                                                    stateUpdated(pump)})));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_EQ(host.handlesAlive, 0);
}

TEST_F(CheckOutByProvider, WritesItsEntryToTheDebugTrace) {
    traceOn();
    checkOut(pump);
    EXPECT_THAT(shown.str(), StartsWith("+++ Entering SCCFacade checkout\n"));
}

TEST_F(CheckOutByProvider, MakesACallForEachUnit) {
    checkOut(pump, valve);
    EXPECT_THAT(callsOn("SccCheckout"), ElementsAre("context=1 window=null files=" + path(pump) + noComment,
                                                    "context=1 window=null files=" + path(valve) + noComment));
}

TEST_F(CheckOutByProvider, SavesOnlyIfTheToolsPropertyAsksForIt) {
    checkOut(pump);
    EXPECT_THAT(effects(), Not(Contains("save model")));
    host.setToolDefault("SCC", IPN::CMSaveOnCheckOut, "True");
    forget();
    checkOut(pump);
    EXPECT_EQ(effects().front(), "save model");
    forget();
    checkOut();
    EXPECT_THAT(effects(), IsEmpty()) << "nothing is saved for an empty list, and no callback is called";
}

TEST_F(CheckOutByProvider, PassesTheCommentOnlyToAProviderThatTakesIt) {
    EchoArgument first("first");
    EchoArgument second("second");
    args = {&first, &second};
    checkOut(pump);
    EXPECT_THAT(callsOn("SccCheckout").back(), HasSubstr(" comment= flags"));
    CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(1);
    checkOut(pump);
    EXPECT_THAT(callsOn("SccCheckout").back(), HasSubstr(" comment=first:log flags"));
    args = {nullptr};
    checkOut(pump);
    EXPECT_THAT(callsOn("SccCheckout").back(), HasSubstr(" comment= flags"));
}

TEST_F(CheckOutByProvider, PassesTheOptionsThatWereChosenLast) {
    int options = 0;
    *CMProperty::getPvOptionsPtr() = &options;
    checkOut(pump);
    EXPECT_THAT(callsOn("SccCheckout").back(), HasSubstr("options=given"));
}

TEST_F(CheckOutByProvider, WithoutAContextEndsAtOnceAndLeavesReloadsOpen) {
    disconnect();
    const support::OutcomeRecorder seen;
    checkOut(pump, valve);
    EXPECT_THAT(provider->calls, IsEmpty());
    EXPECT_THAT(shownTexts(), ElementsAre(text(Text::providerNotConnected)));
    EXPECT_THAT(effects(), Contains("reloads open"));
    EXPECT_THAT(effects(), Not(Contains("reloads close")));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl noTool"));
}

TEST_F(CheckOutByProvider, LeavesAFileAloneThatTheUserHasOutAndSaysSoInTheStream) {
    const support::OutcomeRecorder seen;
    for (const long state : {SCC_STATUS_CHECKEDOUT, SCC_STATUS_OUTBYUSER}) {
        shown.str({});
        makeFile(pump);
        setState(pump, state);
        checkOut(pump, valve);
        EXPECT_EQ(shown.str(), text(Text::fileCheckedOut, {path(pump)}) + "\n");
    }
    EXPECT_THAT(callsOn("SccCheckout"), SizeIs(2)) << "the other file";
    EXPECT_THAT(callsOn("SccCheckout"), Each(HasSubstr(path(valve))));
    EXPECT_THAT(seen.lines(),
                ElementsAre("Pump.ocl nothingToDo", "Valve.ocl done", "Pump.ocl nothingToDo", "Valve.ocl done"));
    getMainCMOutputer()() = nullptr;
    checkOut(pump);
    EXPECT_THAT(callsOn("SccCheckout"), SizeIs(2)) << "without a stream silently";
}

TEST_F(CheckOutByProvider, ChecksAMissingFileOutWhateverItsState) {
    setState(pump, SCC_STATUS_CHECKEDOUT);
    checkOut(pump);
    EXPECT_THAT(callsOn("SccCheckout"), SizeIs(1));
}

TEST_F(CheckOutByProvider, TriesAFileWhoseStateIsUnknown) {
    makeFile(pump);
    setState(pump, SCC_STATUS_CHECKEDOUT);
    provider->answer("SccQueryInfo", SCC_E_ACCESSFAILURE);
    CCMSyncQuestionDlg::m_response = "yestoall";
    checkOut(pump);
    EXPECT_THAT(callsOn("SccCheckout"), SizeIs(1));
}

TEST_F(CheckOutByProvider, AsksAboutAWritableFile) {
    const support::OutcomeRecorder seen;
    makeWritable(pump);
    CCMSyncQuestionDlg::m_response = "notoall";
    checkOut(pump);
    EXPECT_THAT(callsOn("SccCheckout"), IsEmpty());
    CCMSyncQuestionDlg::m_response = "yestoall";
    checkOut(pump);
    EXPECT_THAT(callsOn("SccCheckout"), SizeIs(1));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl declined", "Pump.ocl done"));
    CCMSyncQuestionDlg::m_response = "notoall";
    host.setToolDefault("SCC", "AskOnCheckoutReadWrite", "nO");
    checkOut(pump);
    EXPECT_THAT(callsOn("SccCheckout"), SizeIs(2)) << "not asked";
}

TEST_F(CheckOutByProvider, AFailureIsShownNamedAtTheEndAndTheNextUnitsFollow) {
    int call = 0;
    provider->answers["SccCheckout"] = [&call] { return ++call == 2 ? SCC_OK : SCC_E_FILEISLOCKED; };
    const support::OutcomeRecorder seen;
    checkOut(pump, valve, tank);
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultFileLocked), errorText(Text::resultFileLocked),
                                          text(Text::filesNotCheckedOut, {"Pump.ocl, Tank.ocl"})));
    EXPECT_EQ(host.messages.shown[2].flags, MB_ICONEXCLAMATION);
    EXPECT_THAT(reloads(), ElementsAre("reload Valve flag=0"));
    EXPECT_THAT(host.callsOf("update mode"), SizeIs(3)) << "also of the units that failed";
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl failed", "Valve.ocl done", "Tank.ocl failed"));
    EXPECT_EQ(seen.outcomes[0].reason, text(Text::resultFileLocked));
    ASSERT_THAT(seen.outcomes[0].runs, SizeIs(1));
    EXPECT_EQ(seen.outcomes[0].runs[0].command, "SccCheckout");
    EXPECT_EQ(seen.outcomes[0].runs[0].result, SCC_E_FILEISLOCKED);
}

TEST_F(CheckOutByProvider, ShowsTheClosingMessageBeforeReloadsClose) {
    provider->answer("SccCheckout", SCC_E_FILEISLOCKED);
    checkOut(pump);
    const Effects all = effects();
    EXPECT_LT(std::ranges::find(all, "ask 48: " + text(Text::filesNotCheckedOut, {"Pump.ocl"})),
              std::ranges::find(all, "reloads close"));
}

TEST_F(CheckOutByProvider, ReloadsNoEmbeddedFile) {
    auto &notes = host.addEmbeddedFile("Notes.doc");
    units = list(&notes);
    CheckOutSCC()(units, args, diags, false);
    EXPECT_THAT(effects(), Contains("log: Performing ATM for the file " + path(notes)));
    EXPECT_THAT(host.callsOf("can reload"), IsEmpty());
    EXPECT_THAT(host.callsOf("update mode"), SizeIs(1));
}

TEST_F(CheckOutByProvider, AReloadedUnitTakesThePlaceOfTheOldOne) {
    IUnit *reloaded = nullptr;
    host.reload.reloadUnit = [&](IUnit *, int) { return reloaded = &host.replaceClass(pump); };
    const support::OutcomeRecorder seen;
    checkOut(pump);
    EXPECT_THAT(entries(units), ElementsAre(reloaded));
    EXPECT_EQ(seen.last().unitNow, reloaded);
    EXPECT_EQ(seen.last().reload, CMOutcome::Reload::content);
}

TEST_F(CheckOutByProvider, AFileThatCannotBeReloadedInPlaceIsLoadedAndRemembered) {
    host.reload.canReload = [](const IUnit *, int) { return false; };
    host.reload.addToModel = [&](const CString &, const CString &, int) { return &pump; };
    checkOut(pump);
    EXPECT_THAT(effects(), Contains("loader start " + unitsDirectory().string()));
    EXPECT_THAT(effects(), Contains("add to model Pump.ocl flag=0"));
    EXPECT_THAT(effects(), Contains("add to saved units Pump"));
}

TEST_F(CheckOutByProvider, AUnitThatCannotBeLoadedLeavesTheListAndIsReported) {
    host.setToolDefault("SCC", "ReportLoadingError", "Output Window");
    host.reload.reloadUnit = [this](IUnit *unit, int) -> IUnit * {
        if (unit == &pump) {
            host.removeObject(pump);
            return nullptr;
        }
        return unit;
    };
    const std::string file = path(pump);
    const support::OutcomeRecorder seen;
    checkOut(pump, valve);
    EXPECT_THAT(entries(units), ElementsAre(&valve));
    EXPECT_THAT(host.window.text(), HasSubstr(text(Text::loadingFailed, {file})));
    EXPECT_THAT(shownTexts(), ElementsAre(text(Text::filesNotCheckedOut, {""})));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl notLoaded", "Valve.ocl done"));
}

TEST_F(CheckOutByProvider, AUnitThatDiesInAnEarlierReloadIsPassedOver) {
    host.reload.reloadUnit = [this](IUnit *unit, int) {
        if (unit == &pump) {
            host.removeObject(valve);
        }
        return unit;
    };
    const support::OutcomeRecorder seen;
    checkOut(pump, valve);
    EXPECT_THAT(callsOn("SccCheckout"), SizeIs(1));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl done", "gone"));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
}

TEST_F(CheckOutByProvider, WorksOnAUnitOnce) {
    checkOut(pump, valve, pump);
    EXPECT_THAT(callsOn("SccCheckout"), SizeIs(2));
    EXPECT_THAT(entries(units), ElementsAre(&pump, &valve));
}

TEST_F(CheckOutByProvider, UsesTheContextOfEachUnit) {
    associate(valve, "Mill");
    checkOut(pump, valve);
    EXPECT_THAT(callsOn("SccCheckout")[0], HasSubstr("context=1 "));
    EXPECT_THAT(callsOn("SccCheckout")[1], HasSubstr("context=2 "));
}

TEST_F(CheckOutByProvider, TheObserverCanHoldAUnitBack) {
    support::OutcomeRecorder seen;
    seen.mayBeginIf = [&](const CMOutcome &next) { return next.unit != &pump; };
    checkOut(pump, valve);
    EXPECT_THAT(callsOn("SccCheckout"), ElementsAre(HasSubstr(path(valve))));
    EXPECT_THAT(seen.lines(), ElementsAre("Valve.ocl done"));
}

class CheckOutWithoutTheEntry : public CheckOutByProvider {
  protected:
    CheckOutWithoutTheEntry() : CheckOutByProvider(DOUBLE_PROVIDER_WITHOUT_CHECK_OUT) {}
};

TEST_F(CheckOutWithoutTheEntry, ReadsAsASuccessButIsReportedAsNoCommand) {
    const support::OutcomeRecorder seen;
    checkOut(pump);
    EXPECT_THAT(shownTexts(), IsEmpty());
    EXPECT_THAT(reloads(), SizeIs(1));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl noCommand"));
    EXPECT_THAT(seen.last().reason.str(), HasSubstr("SccCheckout"));
}

// --- All in one call.

class CheckOutInOneCall : public CheckOutByProvider {
  protected:
    CheckOutInOneCall() { useOneCall(); }
};

TEST_F(CheckOutInOneCall, AsksForEachFileAndCallsOnce) {
    EXPECT_EQ(checkOut(pump, valve), 0);
    EXPECT_THAT(effects(), ElementsAreArray(joined({{"reloads open"},
                                                    logged("Getting SCC Context to perform check out"),
                                                    queried(path(pump)),
                                                    queried(path(valve)),
                                                    called("SccCheckout", {path(pump), path(valve)}, noComment),
                                                    reloaded(pump),
                                                    reloaded(valve),
                                                    {"reloads close"},
                                                    modeUpdated(pump),
                                                    stateUpdated(pump),
                                                    modeUpdated(valve),
                                                    stateUpdated(valve)})));
}

TEST_F(CheckOutInOneCall, IsChosenOnlyInAnOpenProject) {
    host.model.projectIsOpen = false;
    checkOut(pump, valve);
    EXPECT_THAT(callsOn("SccCheckout"), SizeIs(2));
}

TEST_F(CheckOutInOneCall, UsesTheContextOfTheLastUnit) {
    associate(valve, "Mill");
    checkOut(pump, valve);
    EXPECT_THAT(callsOn("SccCheckout"), ElementsAre(HasSubstr("context=2 ")));
}

TEST_F(CheckOutInOneCall, WithAllFilesLeftOutCallsWithNoFileAndNamesTheLastUnitOnAFailure) {
    makeFile(pump);
    makeFile(valve);
    provider->otherState = SCC_STATUS_CHECKEDOUT;
    provider->answer("SccCheckout", SCC_E_NONSPECIFICERROR);
    checkOut(pump, valve);
    EXPECT_THAT(callsOn("SccCheckout"), ElementsAre(std::string("context=1 window=null files=") + noComment));
    EXPECT_THAT(effects(), Contains("log: Invoking SccCheckout on Scc dll for the following files:\n"));
    EXPECT_EQ(shownTexts().back(), text(Text::filesNotCheckedOut, {"Valve.ocl"}));
}

TEST_F(CheckOutInOneCall, AFailureFailsAllFilesAndReloadsNone) {
    provider->answer("SccCheckout", SCC_E_FILEISLOCKED);
    const support::OutcomeRecorder seen;
    checkOut(pump, valve);
    EXPECT_THAT(shownTexts(),
                ElementsAre(errorText(Text::resultFileLocked), text(Text::filesNotCheckedOut, {"Valve.ocl"})));
    EXPECT_THAT(reloads(), IsEmpty());
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl failed", "Valve.ocl failed"));
}

TEST_F(CheckOutInOneCall, WithoutAContextOfTheProjectOrOfAUnitCallsNothing) {
    disconnect();
    checkOut(pump);
    EXPECT_THAT(provider->calls, IsEmpty());
    EXPECT_THAT(effects(), Not(Contains("reloads close")));
}

TEST_F(CheckOutInOneCall, ReloadedUnitsAreInTheListAndDeadOnesAreNot) {
    IUnit *newPump = nullptr;
    host.reload.reloadUnit = [&](IUnit *unit, int) -> IUnit * {
        if (unit == &pump) {
            host.removeObject(valve);
            return newPump = &host.replaceClass(pump);
        }
        return unit;
    };
    const support::OutcomeRecorder seen;
    checkOut(pump, valve, tank);
    EXPECT_EQ(std::set<IUnit *>(units.begin(), units.end()), (std::set<IUnit *>{newPump, &tank}));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl done", "gone", "Tank.ocl done"));
}

TEST_F(CheckOutInOneCall, SeveralUnitsThatCannotBeLoadedLeaveTheList) {
    host.reload.reloadUnit = [this](IUnit *unit, int) -> IUnit * {
        host.removeObject(*unit);
        return nullptr;
    };
    checkOut(pump, valve, tank);
    EXPECT_THAT(entries(units), IsEmpty());
}

} // namespace
