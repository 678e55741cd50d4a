// Tests showing the history and the properties through the provider.
#include "CM/CMSupport/provider/SCCFacade.h"
#include "tests/CM/CMSupport/provider/OperationFixture.h"

using resources::Text;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class ShowFixture : public OperationFixture {
  protected:
    ShowFixture() { provider->options = &place; }
    /// The provider has options; the second call answers `result`.
    void offerOptions(SCCRTN result) {
        provider->answers["SccGetCommandOptions"] = [this, result, asked = false]() mutable {
            asked = !asked;
            return asked ? SCCRTN{SCC_I_ADV_SUPPORT} : result;
        };
    }
    int place = 0;
    recording::Class &pump = host.addUnit("Pump");
    recording::Class &valve = host.addUnit("Valve");
    CMUnitList units{&pump, &valve};
};

class HistoryByProvider : public ShowFixture {};

TEST_F(HistoryByProvider, SavesAsksForOptionsAndCallsOnce) {
    EXPECT_EQ(SCCFacade::SCCHistory(units, args, diags), 0);
    EXPECT_THAT(effects(),
                ElementsAreArray(joined(
                    {{"save model", "provider SccGetCommandOptions context=1 window=null command=7 options=null"},
                     called("SccHistory", {path(pump), path(valve)}, " flags=0 options=null")})));
}

TEST_F(HistoryByProvider, PassesTheOptionsThatTheUserChooses) {
    traceOn();
    offerOptions(SCC_OK);
    SCCFacade::SCCHistory(units, args, diags);
    EXPECT_THAT(callsOn("SccGetCommandOptions"), ElementsAre("context=1 window=null command=7 options=null",
                                                             "context=1 window=null command=7 options=given"));
    EXPECT_THAT(callsOn("SccHistory")[0], HasSubstr("options=given"));
    EXPECT_EQ(shown.str(), "+++ Before query for HISTORY advanced options");
    provider->answers.clear();
    SCCFacade::SCCHistory(units, args, diags);
    EXPECT_THAT(callsOn("SccHistory")[1], HasSubstr("options=null")) << "forgotten";
}

TEST_F(HistoryByProvider, EndsIfTheUserCancelsTheOptions) {
    offerOptions(SCC_I_OPERATIONCANCELED);
    SCCFacade::SCCHistory(units, args, diags);
    EXPECT_THAT(callsOn("SccHistory"), IsEmpty());
    EXPECT_THAT(shownTexts(), IsEmpty());
}

TEST_F(HistoryByProvider, OnlyTheAnswerOneMeansThatThereAreOptions) {
    provider->answer("SccGetCommandOptions", SCC_E_OPNOTSUPPORTED);
    SCCFacade::SCCHistory(units, args, diags);
    EXPECT_THAT(callsOn("SccGetCommandOptions"), SizeIs(1));
    EXPECT_THAT(callsOn("SccHistory"), SizeIs(1));
}

TEST_F(HistoryByProvider, UsesTheContextOfTheFirstUnitAndEndsWithoutOne) {
    associate(pump, "Mill");
    SCCFacade::SCCHistory(units, args, diags);
    EXPECT_THAT(callsOn("SccHistory"), ElementsAre(HasSubstr("context=2 ")));
    pump.sccArchive.reset();
    disconnect();
    forget();
    SCCFacade::SCCHistory(units, args, diags);
    EXPECT_THAT(provider->calls, IsEmpty());
}

TEST_F(HistoryByProvider, ANullEntryTakesUpAPlaceAndAFailureIsShown) {
    provider->answer("SccHistory", SCC_E_FILENOTCONTROLLED);
    units = {&pump, nullptr};
    const support::OutcomeRecorder seen;
    SCCFacade::SCCHistory(units, args, diags);
    EXPECT_THAT(callsOn("SccHistory"), ElementsAre(HasSubstr(" files=" + path(pump) + ", ")));
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultNotControlled)));
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl failed"));
}

TEST_F(HistoryByProvider, OfItemsWorksInTheirContext) {
    useContextOfItems();
    CMArchiveItemListWrapper items;
    items.addTail(new CMArchiveItem("/w/Pump.ocl", "", CMArchiveItem::readOnly, "", ""));
    EXPECT_EQ(SCCFacade::SCCAltHistory(items.list(), args, diags), 0);
    EXPECT_THAT(effects(),
                ElementsAreArray(joined(
                    {{"save model", "provider SccGetCommandOptions context=1 window=null command=7 options=null"},
                     called("SccHistory", {"/w/Pump.ocl"}, " flags=0 options=null")})));
}

class PropertiesByProvider : public ShowFixture {
  protected:
    [[nodiscard]] std::string file(const IUnit &unit) const {
        return unitsDirectory().string() + "\\" + unit.getFileName().str();
    }
};

TEST_F(PropertiesByProvider, SavesAsksForOptionsOnceAndCallsForEachUnit) {
    units.AddTail(nullptr);
    EXPECT_EQ(SCCFacade::SCCProperties(units, args, diags), 0);
    const auto shownFor = [this](const IUnit &unit) {
        return Effects{"log: Invoking SccProperties on Scc dll",
                       "provider SccProperties context=1 window=null file=" + file(unit),
                       "log: Returned from SccProperties on Scc dll",
                       "log: Scc dll returned 0 from SccProperties"};
    };
    EXPECT_THAT(effects(), ElementsAreArray(joined(
                               {{"save model", "log: Getting SCC Context to invoke SccProperties",
                                 "provider SccGetCommandOptions context=1 window=null command=9 options=null"},
                                shownFor(pump),
                                logged("Getting SCC Context to invoke SccProperties"),
                                shownFor(valve)})));
}

TEST_F(PropertiesByProvider, EndsWithoutAMessageIfTheUserCancelsTheOptions) {
    offerOptions(SCC_I_OPERATIONCANCELED);
    const support::OutcomeRecorder seen;
    SCCFacade::SCCProperties(units, args, diags);
    EXPECT_THAT(callsOn("SccProperties"), IsEmpty());
    EXPECT_THAT(shownTexts(), IsEmpty());
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl declined"));
}

TEST_F(PropertiesByProvider, ShowsOnlyTheResultOfTheLastUnit) {
    int call = 0;
    provider->answers["SccProperties"] = [&call] { return ++call % 2 == 1 ? SCC_E_FILENOTCONTROLLED : SCC_OK; };
    const support::OutcomeRecorder seen;
    SCCFacade::SCCProperties(units, args, diags);
    EXPECT_THAT(shownTexts(), IsEmpty());
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl failed", "Valve.ocl done"));
    units = {&valve};
    SCCFacade::SCCProperties(units, args, diags);
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultNotControlled)));
}

TEST_F(PropertiesByProvider, EndsAtAUnitWithoutAContext) {
    disconnect();
    SCCFacade::SCCProperties(units, args, diags);
    EXPECT_THAT(provider->calls, IsEmpty());
    EXPECT_THAT(shownTexts(), SizeIs(1));
}

} // namespace
