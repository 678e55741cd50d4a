#include "CM/CMSupport/command/CMCheckOut.h"

#include "CM/CMSupport/resources/Format.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class CheckOutReload : public CheckOutFixture {
  protected:
    template <class... UNITS> int checkOut(UNITS &...given) {
        units = list(&given...);
        return CMCheckOut()(units, args, diags, false);
    }

    /// Keeps what is in the list when reloads are closed.
    void watchTheClosingCall() {
        watched_ = &units;
        CMFacade::afterATMCallbackFunc() = [](CMainFrame *) { atTheClose = entries(*watched_); };
        atTheClose.clear();
    }

    CMUnitList units;
    static inline std::vector<IUnit *> atTheClose;

  private:
    static inline const CMUnitList *watched_ = nullptr;
};

TEST_F(CheckOutReload, AnUnchangedModelIsBroughtIntoLineAndTheUnitStays) {
    host.reload.compare = [](const CString &) { return 1; };
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(checkOut(pump), 1);
    EXPECT_THAT(host.calls, Contains("compare atm Pump"));
    EXPECT_THAT(host.callsOf("can reload"), IsEmpty());
    EXPECT_THAT(host.callsOf("reload "), IsEmpty());
    EXPECT_THAT(entries(units), ElementsAre(&pump));
}

TEST_F(CheckOutReload, AReloadedUnitAtTheAddressOfTheOldOneIsInTheListAtTheEnd) {
    auto &pump = host.addUnit("Pump");
    IUnit *reloaded = nullptr;
    host.reload.reloadUnit = [&](IUnit *, int) {
        host.removeObject(pump);
        host.storage.nextAddress = &pump;
        return reloaded = &host.addUnit("Pump");
    };
    EXPECT_EQ(checkOut(pump), 1);
    ASSERT_EQ(reloaded, &pump);
    EXPECT_THAT(entries(units), ElementsAre(reloaded));
}

TEST_F(CheckOutReload, AReloadedUnitAtTheAddressOfALaterOneThatDiedIsWorkedOnOnceAndStays) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    IUnit *reloaded = nullptr;
    host.reload.reloadUnit = [&](IUnit *, int) {
        host.removeObject(pump);
        host.removeObject(valve);
        host.storage.nextAddress = &valve;
        return reloaded = &host.addUnit("Pump");
    };
    EXPECT_EQ(checkOut(pump, valve), 1);
    EXPECT_EQ(host.worker.commands.size(), 1U);
    EXPECT_THAT(entries(units), ElementsAre(reloaded));
}

TEST_F(CheckOutReload, AUnitThatCannotBeReloadedInPlaceIsLoadedAnewAndRemembered) {
    auto &pump = host.addClass("Pump");
    host.reload.canReload = [](const IUnit *, int) { return false; };
    IUnit *loaded = nullptr;
    host.reload.addToModel = [&](const CString &, const CString &, int) {
        return loaded = &host.replaceClass(pump);
    };
    EXPECT_EQ(checkOut(pump), 1);
    EXPECT_THAT(host.calls, Contains("loader start " + unitsDirectory().string()));
    EXPECT_THAT(host.calls, Contains("add to model Pump.ocl flag=0"));
    EXPECT_THAT(host.calls, Contains("add to saved units Pump"));
    EXPECT_THAT(entries(units), ElementsAre(loaded));
}

TEST_F(CheckOutReload, ALoadedUnitIsNotRememberedWithoutAWorkspace) {
    auto &pump = host.addUnit("Pump");
    host.reload.canReload = [](const IUnit *, int) { return false; };
    host.reload.addToModel = [&](const CString &, const CString &, int) { return &pump; };
    host.model.workspace = nullptr;
    EXPECT_EQ(checkOut(pump), 1);
    host.model.hasWorkspace = false;
    EXPECT_EQ(checkOut(pump), 1);
    EXPECT_THAT(host.callsOf("add to saved units"), IsEmpty());
}

TEST_F(CheckOutReload, TheClosingCallFindsTheReloadedUnitInThePlaceOfTheOldOne) {
    watchTheClosingCall();
    auto &pump = host.addClass("Pump");
    auto &valve = host.addClass("Valve");
    IUnit *newPump = nullptr;
    host.reload.reloadUnit = [&](IUnit *unit, int) -> IUnit * {
        return unit == &pump ? newPump = &host.replaceClass(pump) : unit;
    };
    EXPECT_EQ(checkOut(pump, valve), 1);
    EXPECT_THAT(atTheClose, ElementsAre(newPump, &valve));
}

TEST_F(CheckOutReload, AnEmbeddedFileKeepsItsEntryBehindAUnitThatCouldNotBeLoaded) {
    watchTheClosingCall();
    auto &pump = host.addUnit("Pump");
    auto &notes = host.addEmbeddedFile("Notes.doc");
    host.reload.reloadUnit = [](IUnit *, int) { return nullptr; };
    EXPECT_EQ(checkOut(pump, notes), 1);
    EXPECT_THAT(atTheClose, ElementsAre(&notes));
}

TEST_F(CheckOutReload, AReloadThatGivesNothingIsReportedAndTakesTheEntryOff) {
    setToolProperty("ReportLoadingError", "Output Window");
    auto &pump = host.addUnit("Pump");
    host.reload.reloadUnit = [this, &pump](IUnit *, int) -> IUnit * {
        host.removeObject(pump);
        return nullptr;
    };
    const std::string file = pump.getFullFileName().str();
    EXPECT_EQ(checkOut(pump), 0);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_THAT(host.window.text(), HasSubstr("ERROR : The file \"" + file + "\" could not be loaded"));
    EXPECT_THAT(calls(), Contains("reloads open"));
    EXPECT_THAT(calls(), Not(Contains("reloads close"))) << "the loop has emptied the list";
    EXPECT_TRUE(diags.IsEmpty());
    expectNothingIsLeft();
}

TEST_F(CheckOutReload, AUnitThatTheHostHasKeptAfterAFailedReloadComesBackFromTheValidator) {
    auto &pump = host.addUnit("Pump");
    host.reload.reloadUnit = [](IUnit *, int) { return nullptr; };
    EXPECT_EQ(checkOut(pump), 0);
    EXPECT_THAT(entries(units), ElementsAre(&pump));
    EXPECT_THAT(calls(), Not(Contains("reloads close")));
}

TEST_F(CheckOutReload, TheLoopGoesOnAfterALoadingFailureAndTheClosingCallComes) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    host.reload.reloadUnit = [&](IUnit *unit, int) -> IUnit * {
        if (unit != &pump) {
            return unit;
        }
        host.removeObject(pump);
        return nullptr;
    };
    EXPECT_EQ(checkOut(pump, valve), 1);
    EXPECT_THAT(entries(units), ElementsAre(&valve));
    EXPECT_EQ(calls().back(), "reloads close");
}

TEST_F(CheckOutReload, ALoadingFailureTakesThePlaceOfTheToolsErrorsAndStandsInFrontOfTheNextOnes) {
    auto &pump = host.addUnit("Pump");
    const std::string failure =
        resources::format(resources::Text::loadingFailed, {pump.getFullFileName()}) + "co Valve.ocl?";
    host.worker.run = [](const CString &command) { return recording::ToolRun{{}, {command + "?"}, 0}; };
    host.reload.reloadUnit = [&](IUnit *unit, int) { return unit == &pump ? nullptr : unit; };
    checkOut(pump, host.addUnit("Valve"));
    EXPECT_EQ(shown.str(), "co Pump.ocl\nco Pump.ocl?co Pump.ocl?co Valve.ocl\n" + failure + failure);
}

TEST_F(CheckOutReload, ALoaderThatGivesNothingIsReportedToo) {
    setToolProperty("ReportLoadingError", "Message Box");
    host.reload.canReload = [](const IUnit *, int) { return false; };
    EXPECT_EQ(checkOut(host.addUnit("Pump")), 0);
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_THAT(host.messages.shown[0].text.str(), HasSubstr("Pump.ocl"));
    EXPECT_THAT(host.callsOf("add to saved units"), IsEmpty());
}

TEST_F(CheckOutReload, AnEmbeddedFileIsComparedWithoutAFirstPictureAndNotReloaded) {
    auto &notes = host.addEmbeddedFile("Notes.doc");
    EXPECT_EQ(checkOut(notes), 1);
    EXPECT_THAT(host.callsOf("compare load before"), IsEmpty());
    EXPECT_THAT(host.callsOf("compare load after").size(), 1U);
    EXPECT_THAT(host.callsOf("compare ->").size(), 1U);
    EXPECT_THAT(logTexts(), Contains("Performing ATM for the file " + notes.getFullFileName().str()));
    EXPECT_THAT(host.callsOf("can reload"), IsEmpty());
    EXPECT_THAT(host.callsOf("reload"), ElementsAre("reloads open", "reloads close"));
    EXPECT_THAT(entries(units), ElementsAre(&notes));
}

TEST_F(CheckOutReload, AnEmbeddedFileThatComparesEqualIsNotBroughtIntoLine) {
    host.reload.compare = [](const CString &) { return 1; };
    EXPECT_EQ(checkOut(host.addEmbeddedFile("Notes.doc")), 1);
    EXPECT_THAT(host.callsOf("compare atm"), IsEmpty());
}

TEST_F(CheckOutReload, UpdatesNeitherHeaderNorModeItself) {
    checkOut(host.addUnit("Pump"));
    EXPECT_THAT(host.callsOf("update"), IsEmpty());
}

} // namespace
