// Tests undoing check outs through the provider.
#include "CM/CMSupport/provider/UncheckoutSCC.h"

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

constexpr auto noFlags = " flags=0 options=null";

class UndoByProvider : public OperationFixture {
  protected:
    UndoByProvider() { provider->otherState = SCC_STATUS_CONTROLLED | SCC_STATUS_CHECKEDOUT; }
    int undo(CMUnitList given) {
        units = std::move(given);
        return SCCFacade::SCCUncheckout(units, args, diags);
    }
    void ignoreOthers() { setProviderProperty("IgnoreUndoCheckoutForNotCheckedoutUnits", "True"); }

    recording::Class &pump = host.addUnit("Pump");
    recording::Class &valve = host.addUnit("Valve");
    recording::Class &tank = host.addUnit("Tank");
    CMUnitList units;
};

TEST_F(UndoByProvider, SavesAsksCallsReloadsAndUpdatesInThisOrder) {
    EXPECT_EQ(undo(list(&pump)), 0);
    EXPECT_THAT(effects(), ElementsAreArray(joined({{"save model", "reloads open"},
                                                    logged("Getting SCC Context to perform undo check out"),
                                                    queried(path(pump)),
                                                    called("SccUncheckout", {path(pump)}, noFlags),
                                                    reloaded(pump),
                                                    headerUpdated(pump),
                                                    modeUpdated(pump),
                                                    stateUpdated(pump, 3),
                                                    {"reloads close"}})));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
}

TEST_F(UndoByProvider, SavesAlsoForAnEmptyListButCallsNoCallback) {
    undo(CMUnitList());
    EXPECT_THAT(effects(), ElementsAre("save model", "log: Getting SCC Context to perform undo check out"));
}

TEST_F(UndoByProvider, WithoutAContextLeavesReloadsOpen) {
    disconnect();
    EXPECT_EQ(undo(list(&pump)), 0);
    EXPECT_THAT(effects(), Contains("reloads open"));
    EXPECT_THAT(effects(), Not(Contains("reloads close")));
    EXPECT_THAT(provider->calls, IsEmpty());
}

TEST_F(UndoByProvider, MakesACallForEachUnitOnceInTheContextOfTheFirst) {
    associate(pump, "Mill");
    undo(list(&pump, &valve, &pump));
    EXPECT_THAT(callsOn("SccUncheckout"), ElementsAre("context=2 window=null files=" + path(pump) + noFlags,
                                                      "context=2 window=null files=" + path(valve) + noFlags));
}

TEST_F(UndoByProvider, AsksAboutThePathAndUndoesTheFullName) {
    pump.fullFileName = "/elsewhere/Pump.ocl";
    undo(list(&pump));
    EXPECT_THAT(provider->calls[0], HasSubstr(" files=" + unitsDirectory().string() + "/Pump.ocl"));
    EXPECT_THAT(callsOn("SccUncheckout")[0], HasSubstr(" files=/elsewhere/Pump.ocl "));
}

TEST_F(UndoByProvider, EndsAtAUnitThatIsNotCheckedOutIfTheProjectWantsThat) {
    ignoreOthers();
    setState(valve, SCC_STATUS_CONTROLLED);
    const support::OutcomeRecorder seen;
    EXPECT_EQ(undo(list(&pump, &valve, &tank)), 0);
    EXPECT_THAT(callsOn("SccUncheckout"), ElementsAre(HasSubstr(path(pump))));
    EXPECT_EQ(host.window.text(), "\n" + text(Text::fileNotCheckedOut, {path(valve)}) + "\n");
    EXPECT_THAT(effects(), Not(Contains("reloads close")));
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl done", "Valve.ocl nothingToDo"));
}

TEST_F(UndoByProvider, OtherwiseLeavesTheAnswerToTheProvider) {
    setState(pump, SCC_STATUS_CONTROLLED);
    provider->answers["SccUncheckout"] = [] { return SCC_E_NOTCHECKEDOUT; };
    const support::OutcomeRecorder seen;
    undo(list(&pump, &valve));
    EXPECT_THAT(callsOn("SccUncheckout"), SizeIs(2));
    EXPECT_THAT(shownTexts(),
                ElementsAre(errorText(Text::resultNotCheckedOut), errorText(Text::resultNotCheckedOut)));
    EXPECT_THAT(reloads(), IsEmpty());
    EXPECT_THAT(host.callsOf("update "), IsEmpty());
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl failed", "Valve.ocl failed"));
}

TEST_F(UndoByProvider, TriesAFileWhoseStateIsUnknown) {
    ignoreOthers();
    setState(pump, 0);
    provider->answer("SccQueryInfo", SCC_E_ACCESSFAILURE);
    undo(list(&pump));
    EXPECT_THAT(callsOn("SccUncheckout"), SizeIs(1));
}

TEST_F(UndoByProvider, AnEmbeddedFileIsNotReloadedButItsModeAndStateAreUpdated) {
    auto &notes = host.addEmbeddedFile("Notes.doc");
    undo(list(&notes));
    EXPECT_THAT(host.callsOf("can reload"), IsEmpty());
    EXPECT_THAT(host.callsOf("update header"), IsEmpty());
    EXPECT_THAT(host.callsOf("update mode"), SizeIs(1));
    EXPECT_THAT(host.callsOf("set state"), SizeIs(1));
}

TEST_F(UndoByProvider, AUnitThatCannotBeLoadedLeavesTheListAndIsReported) {
    host.setToolDefault("SCC", "ReportLoadingError", "Message Box");
    host.reload.reloadUnit = [this](IUnit *unit, int) -> IUnit * {
        if (unit == &pump) {
            host.removeObject(pump);
            return nullptr;
        }
        return unit;
    };
    const std::string file = path(pump);
    const support::OutcomeRecorder seen;
    undo(list(&pump, &valve));
    EXPECT_THAT(shownTexts(), ElementsAre(text(Text::loadingFailed, {file})));
    EXPECT_THAT(entries(units), ElementsAre(&valve));
    EXPECT_THAT(seen.lines(), ElementsAre("modelSaved", "Pump.ocl notLoaded", "Valve.ocl done"));
}

TEST_F(UndoByProvider, AReloadedUnitTakesThePlaceOfTheOldOneAndIsUpdated) {
    recording::Class *reloaded = nullptr;
    host.reload.reloadUnit = [&](IUnit *, int) { return reloaded = &host.replaceClass(pump); };
    undo(list(&pump));
    EXPECT_THAT(entries(units), ElementsAre(reloaded));
    EXPECT_EQ(reloaded->cmState, 3);
}

TEST_F(UndoByProvider, RenamesTheFileOfAUnitWhoseNameHasChanged) {
    pump.fileName = "Pump.ocl";
    host.reload.reloadUnit = [this](IUnit *unit, int) {
        pump.name = "Pump2";
        return unit;
    };
    undo(list(&pump));
    EXPECT_THAT(host.callsOf("approve rename"), ElementsAre("approve rename Pump2 Pump2"));
    EXPECT_THAT(host.callsOf("set file name"), ElementsAre("set file name Pump2 Pump2"));
}

TEST_F(UndoByProvider, RenamesNoFileThatWasNotNamedAfterItsUnit) {
    CString oldName = "Pump";
    pump.name = "Pump2";
    UncheckoutSCC().renameFileIfNeeded(&pump, "Other", oldName);
    UncheckoutSCC().renameFileIfNeeded(nullptr, "Pump", oldName);
    EXPECT_THAT(host.callsOf("approve rename"), IsEmpty());
    UncheckoutSCC().renameFileIfNeeded(&pump, "Pump", oldName);
    EXPECT_THAT(host.callsOf("approve rename"), SizeIs(1));
}

} // namespace
