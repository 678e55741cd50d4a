// Tests fetching through the provider.
#include "CM/CMSupport/provider/FetchSCC.h"

#include "CM/CMSupport/core/CMTargetFile.h"
#include "CM/CMSupport/provider/SCCFacade.h"
#include "CM/CMSupport/questions/CCMFetchSelection.h"
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

constexpr auto noFlags = " flags=0 options=null";

class FetchFixture : public OperationFixture {
  protected:
    ~FetchFixture() override { CCMFetchSelection::fetchOptionFlag = 0; }
    void addItem(const IUnit &unit) {
        items.addTail(new CMArchiveItem(path(unit), "", CMArchiveItem::readOnly, "", ""));
    }
    /// The path as a fetch of units and the properties give it.
    [[nodiscard]] std::string withBackslash(const IUnit &unit) const {
        return unitsDirectory().string() + "\\" + unit.getFileName().str();
    }

    recording::Class &pump = host.addUnit("Pump");
    recording::Class &valve = host.addUnit("Valve");
    CMUnitList units;
    CMArchiveItemListWrapper items;
};

class FetchByProvider : public FetchFixture {
  protected:
    int fetch(CMUnitList given) {
        units = std::move(given);
        return SCCFacade::SCCFetch(units, args, diags);
    }
};

TEST_F(FetchByProvider, CallsAndReloadsEachUnitThenUpdatesTheStatesInOneQuery) {
    EXPECT_EQ(fetch(list(&pump, &valve)), 0);
    const auto fetched = [this](const IUnit &unit) {
        return joined({logged("Getting SCC Context to perform fetch"),
                       called("SccGet", {withBackslash(unit)}, noFlags), reloaded(unit),
                       logged("Updating CM Status for unit " + path(unit))});
    };
    EXPECT_THAT(
        effects(),
        ElementsAreArray(joined(
            {{"reloads open"},
             fetched(pump),
             fetched(valve),
             {"log: Invoking SccQueryInfo on Scc dll for the following files:\n\t" + path(pump) + "\n",
              "provider SccQueryInfo context=1 files=" + path(pump) + "," + path(valve),
              "log: Scc dll returned 0 from SccQueryInfo", "set state Pump 1", "log: Status of Class Pump is 1",
              "set state Valve 1", "log: Status of Class Valve is 1", "reloads close"}})));
}

TEST_F(FetchByProvider, SeparatesTheFileNameByABackslash) {
    fetch(list(&pump));
    EXPECT_THAT(callsOn("SccGet"), ElementsAre(HasSubstr(" files=" + withBackslash(pump) + " ")));
}

TEST_F(FetchByProvider, SavesIfThePropertyOfTheProvidersAsksForItAndNotThatOfTheTool) {
    host.setToolDefault("SCC", IPN::CMSaveOnCheckOut, "False");
    fetch(list(&pump));
    EXPECT_THAT(effects(), Not(Contains("save model")));
    setProviderProperty("SaveOnCheckOut", "True");
    forget();
    fetch(list(&pump));
    EXPECT_EQ(effects().front(), "save model");
}

TEST_F(FetchByProvider, AWritableFileThatTheUserKeepsIsLeftAloneButItsStateIsUpdated) {
    makeWritable(pump);
    CCMSyncQuestionDlg::m_response = "notoall";
    setState(valve, 5);
    const support::OutcomeRecorder seen;
    fetch(list(&pump, &valve));
    EXPECT_THAT(callsOn("SccGet"), SizeIs(1));
    EXPECT_THAT(host.callsOf("set state"), ElementsAre("set state Pump 1", "set state Valve 5"));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl declined", "Valve.ocl done"));
}

TEST_F(FetchByProvider, WithoutAContextEndsAtOnce) {
    disconnect();
    fetch(list(&pump, &valve));
    EXPECT_THAT(provider->calls, IsEmpty());
    EXPECT_THAT(shownTexts(), SizeIs(1));
    EXPECT_THAT(effects(), Not(Contains("reloads close")));
}

TEST_F(FetchByProvider, AFailureIsShownAndTheNextUnitsFollow) {
    int call = 0;
    provider->answers["SccGet"] = [&call] { return ++call == 1 ? SCC_E_FILENOTCONTROLLED : SCC_OK; };
    const support::OutcomeRecorder seen;
    fetch(list(&pump, &valve));
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultNotControlled)));
    EXPECT_THAT(reloads(), ElementsAre("reload Valve flag=0"));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl failed", "Valve.ocl done"));
}

TEST_F(FetchByProvider, AnEmbeddedFileIsNotReloaded) {
    auto &notes = host.addEmbeddedFile("Notes.doc");
    fetch(list(&notes));
    EXPECT_THAT(host.callsOf("can reload"), IsEmpty());
    EXPECT_THAT(effects(), Not(Contains("log: Performing ATM for the file " + path(notes))));
}

TEST_F(FetchByProvider, AUnitThatDiesInAReloadIsNotAskedAbout) {
    host.reload.reloadUnit = [this](IUnit *unit, int) -> IUnit * {
        host.removeObject(valve);
        return unit;
    };
    fetch(list(&pump, &valve));
    EXPECT_THAT(callsOn("SccQueryInfo"), ElementsAre("context=1 files=" + path(pump)));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
}

TEST_F(FetchByProvider, AUnitThatCannotBeLoadedLeavesTheList) {
    host.setToolDefault("SCC", "ReportLoadingError", "Message Box");
    const std::string file = path(pump);
    host.reload.reloadUnit = [this](IUnit *unit, int) -> IUnit * {
        host.removeObject(*unit);
        return nullptr;
    };
    fetch(list(&pump));
    EXPECT_THAT(shownTexts(), ElementsAre(text(Text::loadingFailed, {file})));
    EXPECT_TRUE(units.IsEmpty());
}

// --- From the archive.

class FetchFromArchiveByProvider : public FetchFixture {
  protected:
    FetchFromArchiveByProvider() {
        useContextOfItems();
        args = {&argument};
        addItem(pump);
        addItem(valve);
    }
    EchoArgument argument{"first"};
};

TEST_F(FetchFromArchiveByProvider, CallsAndReloadsEachItemUpdatesTheStatesAndEmptiesTheArguments) {
    host.reload.filesInUnit = [](const IUnit *unit, CStringList &files, int recursive, int) {
        EXPECT_EQ(recursive, 0);
        files.AddTail(unit->getNameForReposFiles());
    };
    EXPECT_EQ(SCCFacade::FetchFromArchive(items.list(), args, diags), 0);
    Effects all = effects();
    all.resize(15);
    EXPECT_THAT(all, ElementsAreArray(joined({{"reloads open"},
                                              called("SccGet", {path(pump)}, noFlags),
                                              reloaded(pump),
                                              called("SccGet", {path(valve)}, noFlags),
                                              {reloaded(valve).front()}})));
    EXPECT_THAT(effects(), Contains("log: Updating CM Status for fetched units"));
    EXPECT_THAT(host.callsOf("set state"), ElementsAre("set state Pump 1", "set state Valve 1"));
    EXPECT_EQ(effects().back(), "reloads close");
    EXPECT_TRUE(args.IsEmpty());
}

TEST_F(FetchFromArchiveByProvider, OfNothingDoesNothingAndKeepsTheArguments) {
    CMArchiveItemList none;
    SCCFacade::FetchFromArchive(none, args, diags);
    SCCFacade::RecFetchFromArchive(none, args, diags);
    SCCFacade::SCCFetchForDiffFromArc(none, args, diags);
    EXPECT_THAT(effects(), IsEmpty());
    EXPECT_EQ(args.GetCount(), 1);
}

TEST_F(FetchFromArchiveByProvider, AFailureIsShownAndTheNextItemsFollow) {
    int call = 0;
    provider->answers["SccGet"] = [&call] { return ++call == 1 ? SCC_E_FILENOTCONTROLLED : SCC_OK; };
    const support::OutcomeRecorder seen;
    SCCFacade::FetchFromArchive(items.list(), args, diags);
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultNotControlled)));
    EXPECT_THAT(reloads(), ElementsAre("reload Valve flag=0"));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl failed", "Valve.ocl done"));
}

TEST_F(FetchFromArchiveByProvider, RecursivelyFetchesWithoutReloading) {
    EXPECT_EQ(SCCFacade::RecFetchFromArchive(items.list(), args, diags), 0);
    EXPECT_THAT(effects(), ElementsAreArray(joined({called("SccGet", {path(pump)}, noFlags),
                                                    called("SccGet", {path(valve)}, noFlags)})));
    EXPECT_TRUE(args.IsEmpty());
}

TEST_F(FetchFromArchiveByProvider, RecursivelySavesOnceByTheToolsProperty) {
    host.setToolDefault("SCC", IPN::CMSaveOnCheckOut, "True");
    SCCFacade::RecFetchFromArchive(items.list(), args, diags);
    SCCFacade::RecFetchFromArchive(items.list(), args, diags);
    EXPECT_EQ(std::ranges::count(effects(), "save model"), 1);
}

TEST_F(FetchFromArchiveByProvider, RecursivelyChecksOutAgainIfSelectedForAllItems) {
    CCMFetchSelection::fetchOptionFlag = 1;
    SCCFacade::RecFetchFromArchive(items.list(), args, diags);
    EXPECT_THAT(ProviderFixture::entries(),
                ElementsAre("SccUncheckout", "SccCheckout", "SccUncheckout", "SccCheckout"));
    EXPECT_THAT(callsOn("SccCheckout")[0], HasSubstr(" comment=null flags=0"));
    EXPECT_EQ(CCMFetchSelection::fetchOptionFlag, 1);
    EXPECT_EQ(effects().front(),
              "log: Invoking SccGet on Scc dll for the following files:\n\t" + path(pump) + "\n");
    EXPECT_THAT(effects(), Contains("log: Scc dll returned 0 from SccGet"));
}

TEST_F(FetchFromArchiveByProvider, RecursivelyUndoesOnlyTheFirstItemWithAnyOtherSelection) {
    CCMFetchSelection::fetchOptionFlag = 2;
    SCCFacade::RecFetchFromArchive(items.list(), args, diags);
    EXPECT_THAT(ProviderFixture::entries(), ElementsAre("SccUncheckout", "SccGet", "SccGet"));
    EXPECT_EQ(CCMFetchSelection::fetchOptionFlag, 0);
}

TEST_F(FetchFromArchiveByProvider, RecursivelyTheLastCallDecides) {
    CCMFetchSelection::fetchOptionFlag = 1;
    provider->answer("SccUncheckout", SCC_E_NOTCHECKEDOUT);
    const support::OutcomeRecorder seen;
    SCCFacade::RecFetchFromArchive(items.list(), args, diags);
    EXPECT_THAT(shownTexts(), IsEmpty());
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl done", "Valve.ocl done"));
    provider->answer("SccCheckout", SCC_E_FILEISLOCKED);
    SCCFacade::RecFetchFromArchive(items.list(), args, diags);
    EXPECT_THAT(shownTexts(), SizeIs(2));
}

// --- For a comparison.

class FetchForDiffByProvider : public FetchFixture {
  protected:
    FetchForDiffByProvider() {
        useContextOfItems();
        std::filesystem::create_directories(target);
        for (const auto *const unit : {&pump, &valve}) {
            write(path(*unit), "of " + unit->getName().str());
            addItem(*unit);
        }
        args = {&first, &directory};
    }
    void expectFilesMoved() {
        EXPECT_EQ(read(target / "Pump.ocl"), "of Pump");
        EXPECT_EQ(read(target / "Valve.ocl"), "of Valve");
        EXPECT_FALSE(std::filesystem::exists(path(pump)));
    }
    [[nodiscard]] std::string arguments() const {
        return "context=1 window=null files=" + path(pump) + "," + path(valve) + noFlags;
    }

    const std::filesystem::path target = std::filesystem::canonical(scratch) / "target";
    EchoArgument first{"first"};
    CMTargetFile directory{target.string()};
};

TEST_F(FetchForDiffByProvider, FetchesAllInOneCallMovesTheFilesAndLeavesTheDirectory) {
    EXPECT_EQ(SCCFacade::SCCFetchForDiff(units = list(&pump, &valve), args, diags), 0);
    EXPECT_THAT(callsOn("SccGet"), ElementsAre(arguments()));
    EXPECT_EQ(effects().front(), "log: Getting SCC Context to perform fetch for diff");
    EXPECT_THAT(effects(),
                Contains("log: Invoking SccGet on Scc dll for the following files:\n\t" + path(pump) + "\n"))
        << "only the first";
    expectFilesMoved();
    EXPECT_EQ(std::filesystem::current_path(), target.parent_path());
    EXPECT_EQ(args.GetCount(), 2);
}

TEST_F(FetchForDiffByProvider, ANullEntryTakesUpAPlace) {
    SCCFacade::SCCFetchForDiff(units = list(&pump, static_cast<IUnit *>(nullptr)), args, diags);
    EXPECT_THAT(callsOn("SccGet"), ElementsAre(HasSubstr(" files=" + path(pump) + ", ")));
}

TEST_F(FetchForDiffByProvider, AFailureIsShownAndMovesNothing) {
    provider->answer("SccGet", SCC_E_FILENOTCONTROLLED);
    const support::OutcomeRecorder seen;
    const auto before = std::filesystem::current_path();
    SCCFacade::SCCFetchForDiff(units = list(&pump, &valve), args, diags);
    SCCFacade::SCCFetchForDiffFromArc(items.list(), args, diags);
    EXPECT_THAT(shownTexts(),
                ElementsAre(errorText(Text::resultNotControlled), errorText(Text::resultNotControlled)));
    EXPECT_TRUE(std::filesystem::exists(path(pump)));
    EXPECT_EQ(std::filesystem::current_path(), before);
    EXPECT_EQ(args.GetCount(), 2);
    EXPECT_EQ(seen.lines().size(), 4U);
    EXPECT_EQ(seen.last().kind, CMOutcome::Kind::failed);
}

TEST_F(FetchForDiffByProvider, WithoutAContextDoesNothing) {
    disconnect();
    SCCFacade::SCCFetchForDiff(units = list(&pump), args, diags);
    EXPECT_THAT(provider->calls, IsEmpty());
    EXPECT_TRUE(std::filesystem::exists(path(pump)));
}

TEST_F(FetchForDiffByProvider, OfItemsLogsAllStaysInTheDirectoryAndEmptiesTheArguments) {
    EXPECT_EQ(SCCFacade::SCCFetchForDiffFromArc(items.list(), args, diags), 0);
    EXPECT_THAT(effects(), ElementsAreArray(called("SccGet", {path(pump), path(valve)}, noFlags)));
    expectFilesMoved();
    EXPECT_EQ(std::filesystem::current_path(), target);
    EXPECT_TRUE(args.IsEmpty());
}

} // namespace
