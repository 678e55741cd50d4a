// Tests undoing the check out of units: every successful run is followed by a reload.
#include "CM/CMSupport/command/CMUnCheckout.h"

#include "CM/CMSupport/core/CMLabel.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

#include <stdexcept>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class UnCheckout : public CheckOutFixture {
  protected:
    UnCheckout() { setToolProperty(IPN::CMUnLockItem, "unco $Unit"); }
    int undo(CMUnitList &given, bool hybrid = false) { return CMUnCheckout()(given, args, diags, hybrid); }
    template <class... UNITS> int undoOn(UNITS &...given) {
        units = list(&given...);
        return undo(units);
    }

    CMUnitList units;
};

// --- The steps of a good run.

TEST_F(UnCheckout, RunsAndReloadsAndUpdatesInThisOrder) {
    auto &pump = host.addUnit("Pump");
    const std::string file = pump.getFullFileName().str();
    EXPECT_EQ(undoOn(pump), 1);
    const std::string log = "log 4 ../CM/CMSupport/UnCheckout: ";
    EXPECT_THAT(calls(),
                ElementsAre("reloads open",
                            log + "Executing the following command to uncheck out the file: unco Pump.ocl",
                            "run unco Pump.ocl", log + "Uncheck out command returned the following: ",
                            log + "Performing ATM for the file " + file, "can reload Pump flag=0 -> 1",
                            "reload scope start", "reload Pump flag=0", "reload scope end", "update header Pump 1",
                            "update mode Pump ", "reloads close"));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
    EXPECT_TRUE(diags.IsEmpty());
    expectNothingIsLeft();
}

TEST_F(UnCheckout, LogsTheToolsOutput) {
    host.worker.run = [](const CString &) { return recording::ToolRun{{"1.2 unlocked\n"}, {}, 0}; };
    undoOn(host.addUnit("Pump"));
    EXPECT_THAT(logTexts(), Contains("Uncheck out command returned the following: 1.2 unlocked\n"));
}

TEST_F(UnCheckout, OpensAndClosesReloadsOnceForTheBatch) {
    EXPECT_EQ(undoOn(host.addUnit("Pump"), host.addUnit("Valve")), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco Pump.ocl", "unco Valve.ocl"));
    EXPECT_EQ(host.callsOf("reloads open").size(), 1U);
    EXPECT_EQ(host.callsOf("reloads close").size(), 1U);
}

TEST_F(UnCheckout, AlwaysReloadsAndComparesNoFiles) {
    host.reload.compare = [](const CString &) { return 1; };
    undoOn(host.addUnit("Pump"));
    EXPECT_THAT(host.callsOf("compare"), IsEmpty());
    EXPECT_THAT(calls(), Contains("reload Pump flag=0"));
}

TEST_F(UnCheckout, SavesNothingSelectsNoArchiveAndAsksNobody) {
    setToolProperty(IPN::CMSaveOnCheckOut, "True");
    setToolProperty(IPN::CMArchiveSelection, "Directory");
    setToolProperty(IPN::CMArchive, "/archives/plant");
    setToolProperty(IPN::CMUnLockItem, "unco $archive");
    auto &pump = host.addUnit("Pump");
    pump.batchArchive = "/archives/pump";
    makeWritable(pump);
    EXPECT_EQ(undoOn(pump), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco /archives/plant"));
    EXPECT_THAT(host.callsOf("save model"), IsEmpty());
}

TEST_F(UnCheckout, UsesNoGuard) {
    useOldLayout();
    setToolProperty(IPN::CMUnLockItem, "unco all");
    host.worker.run = [this](const CString &) {
        EXPECT_FALSE(exists(scratch / "Plant.ory"));
        write(scratch / "Plant.ory", "new");
        return recording::ToolRun{};
    };
    units = list(&project());
    EXPECT_EQ(undo(units), 1);
    EXPECT_EQ(read(unitsDirectory() / "Plant.ory"), "old");
    EXPECT_EQ(read(scratch / "Plant.ory"), "new");
}

TEST_F(UnCheckout, ResolvesTheCallersArgumentsAndLeavesTheListAsItWas) {
    setToolProperty(IPN::CMUnLockItem, "unco $label $Unit");
    CMLabel label("v1");
    args.AddTail(&label);
    EXPECT_EQ(undoOn(host.addUnit("Pump")), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco v1 Pump.ocl"));
    EXPECT_EQ(args.GetCount(), 1);
    args.RemoveAll();
}

TEST_F(UnCheckout, ExpandsAndAsksForTheToolWithoutTheHybridFlagWhateverItWasPassed) {
    useProvider();
    host.setToolDefault("Basalt", IPN::CMUnLockItem, "hybrid $Unit");
    host.setToolDefault("SCC", IPN::CMUnLockItem, "unco $Unit");
    units = list(&host.addUnit("Pump"));
    EXPECT_EQ(undo(units, true), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco Pump.ocl"));
    host.setTool("None");
    EXPECT_EQ(undo(units, true), 0);
    EXPECT_EQ(diags.GetCount(), 1);
}

// --- Embedded files.

TEST_F(UnCheckout, AnEmbeddedFileIsNeitherReloadedNorUpdated) {
    auto &notes = host.addEmbeddedFile("Notes.doc");
    EXPECT_EQ(undoOn(notes), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco Notes.doc"));
    EXPECT_THAT(logTexts(), Not(Contains(HasSubstr("Performing ATM"))));
    EXPECT_THAT(host.callsOf("can reload"), IsEmpty());
    EXPECT_THAT(host.callsOf("update"), IsEmpty());
    EXPECT_THAT(entries(units), ElementsAre(&notes));
    EXPECT_EQ(calls().back(), "reloads close");
}

// --- The reload.

TEST_F(UnCheckout, AReloadedUnitTakesTheOldOnesPlace) {
    auto &pump = host.addClass("Pump");
    auto &valve = host.addUnit("Valve");
    IUnit *reloaded = nullptr;
    host.reload.reloadUnit = [&](IUnit *unit, int) -> IUnit * {
        return unit == &valve ? unit : (reloaded = &host.replaceClass(pump));
    };
    EXPECT_EQ(undoOn(pump, valve), 1);
    EXPECT_THAT(entries(units), testing::UnorderedElementsAre(reloaded, &valve));
    EXPECT_EQ(host.callsOf("update header Pump").size(), 1U) << "the new object is updated";
}

TEST_F(UnCheckout, AReloadedUnitIsInItsPlaceBeforeReloadsClose) {
    auto &pump = host.addClass("Pump");
    auto &valve = host.addUnit("Valve");
    static CMUnitList *list = nullptr;
    static std::vector<IUnit *> seen;
    list = &units;
    IUnit *reloaded = nullptr;
    host.reload.reloadUnit = [&](IUnit *unit, int) -> IUnit * {
        return unit == &valve ? unit : (reloaded = &host.replaceClass(pump));
    };
    CMFacade::afterATMCallbackFunc() = [](CMainFrame *) { seen = entries(*list); };
    EXPECT_EQ(undoOn(pump, valve), 1);
    EXPECT_THAT(seen, ElementsAre(reloaded, &valve));
}

TEST_F(UnCheckout, AReloadedUnitThatHasAnotherIdentifierIsInTheListAtTheEnd) {
    auto &pump = host.addUnit("Pump");
    IUnit *reloaded = nullptr;
    host.reload.reloadUnit = [&](IUnit *, int) {
        host.removeObject(pump);
        return reloaded = &host.addUnit("Pump");
    };
    EXPECT_EQ(undoOn(pump), 1);
    EXPECT_THAT(entries(units), ElementsAre(reloaded));
}

TEST_F(UnCheckout, AReloadedUnitAtTheAddressOfTheOldOneIsInTheListAtTheEnd) {
    auto &pump = host.addUnit("Pump");
    IUnit *reloaded = nullptr;
    host.reload.reloadUnit = [&](IUnit *, int) {
        host.removeObject(pump);
        host.storage.nextAddress = &pump;
        return reloaded = &host.addUnit("Pump");
    };
    EXPECT_EQ(undoOn(pump), 1);
    ASSERT_EQ(reloaded, &pump);
    EXPECT_THAT(entries(units), ElementsAre(reloaded));
}

TEST_F(UnCheckout, AReloadedUnitAtTheAddressOfALaterOneThatDiedIsWorkedOnOnceAndStays) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    IUnit *reloaded = nullptr;
    host.reload.reloadUnit = [&](IUnit *, int) {
        host.removeObject(pump);
        host.removeObject(valve);
        host.storage.nextAddress = &valve;
        return reloaded = &host.addUnit("Pump");
    };
    EXPECT_EQ(undoOn(pump, valve), 1);
    EXPECT_EQ(host.worker.commands.size(), 1U);
    EXPECT_THAT(entries(units), ElementsAre(reloaded));
}

TEST_F(UnCheckout, AUnitThatCannotBeReloadedInPlaceIsLoadedAnewAndRemembered) {
    auto &pump = host.addClass("Pump");
    host.reload.canReload = [](const IUnit *, int) { return false; };
    IUnit *loaded = nullptr;
    host.reload.addToModel = [&](const CString &, const CString &, int) {
        return loaded = &host.replaceClass(pump);
    };
    EXPECT_EQ(undoOn(pump), 1);
    EXPECT_THAT(host.calls, Contains("loader start " + unitsDirectory().string()));
    EXPECT_THAT(host.calls, Contains("add to model Pump.ocl flag=0"));
    EXPECT_THAT(host.calls, Contains("add to saved units Pump"));
    EXPECT_THAT(host.callsOf("update"), ElementsAre("update header Pump 1", "update mode Pump "));
    EXPECT_THAT(entries(units), ElementsAre(loaded));
}

TEST_F(UnCheckout, AUnitReloadedInPlaceIsNotRemembered) {
    undoOn(host.addUnit("Pump"));
    EXPECT_THAT(host.callsOf("add to saved units"), IsEmpty());
}

TEST_F(UnCheckout, ALoadedUnitIsNotRememberedWithoutAWorkspace) {
    auto &pump = host.addUnit("Pump");
    host.reload.canReload = [](const IUnit *, int) { return false; };
    host.reload.addToModel = [&](const CString &, const CString &, int) { return &pump; };
    host.model.workspace = nullptr;
    EXPECT_EQ(undoOn(pump), 1);
    host.model.hasWorkspace = false;
    EXPECT_EQ(undoOn(pump), 1);
    EXPECT_THAT(host.callsOf("add to saved units"), IsEmpty());
}

TEST_F(UnCheckout, AReloadThatGivesNothingIsReportedAndTheUnitLeavesTheListAtTheEnd) {
    setToolProperty("ReportLoadingError", "Output Window");
    auto &pump = host.addUnit("Pump");
    const std::string file = pump.getFullFileName().str();
    host.reload.reloadUnit = [this, &pump](IUnit *, int) -> IUnit * {
        host.removeObject(pump);
        return nullptr;
    };
    EXPECT_EQ(undoOn(pump), 0);
    EXPECT_TRUE(units.IsEmpty());
    EXPECT_THAT(host.window.text(), HasSubstr("ERROR : The file \"" + file + "\" could not be loaded"));
    EXPECT_EQ(calls().back(), "reloads close") << "the entry has stayed in the list until then";
    EXPECT_THAT(host.callsOf("update"), IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
    expectNothingIsLeft();
}

TEST_F(UnCheckout, AUnitThatTheHostHasKeptAfterAFailedReloadStays) {
    auto &pump = host.addUnit("Pump");
    host.reload.reloadUnit = [](IUnit *, int) { return nullptr; };
    EXPECT_EQ(undoOn(pump), 0);
    EXPECT_THAT(entries(units), ElementsAre(&pump));
}

TEST_F(UnCheckout, ALoaderThatGivesNothingIsReportedToo) {
    setToolProperty("ReportLoadingError", "Message Box");
    host.reload.canReload = [](const IUnit *, int) { return false; };
    EXPECT_EQ(undoOn(host.addUnit("Pump")), 0);
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_THAT(host.messages.shown[0].text.str(), HasSubstr("Pump.ocl"));
    EXPECT_THAT(host.callsOf("add to saved units"), IsEmpty());
    EXPECT_THAT(host.callsOf("update"), IsEmpty());
}

TEST_F(UnCheckout, TheLoopGoesOnAfterALoadingFailure) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    host.reload.reloadUnit = [&](IUnit *unit, int) -> IUnit * {
        if (unit != &pump) {
            return unit;
        }
        host.removeObject(pump);
        return nullptr;
    };
    EXPECT_EQ(undoOn(pump, valve), 1);
    EXPECT_THAT(entries(units), ElementsAre(&valve));
}

// --- The list and the validator.

TEST_F(UnCheckout, TakesDuplicatesOnceAndSkipsNull) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    units = list(&pump, nullptr, &valve, &pump);
    EXPECT_EQ(undo(units), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco Pump.ocl", "unco Valve.ocl"));
    EXPECT_THAT(entries(units), testing::UnorderedElementsAre(&pump, &valve));
}

TEST_F(UnCheckout, AUnitThatDiedInAnEarlierReloadIsSkippedWithoutARun) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    host.reload.reloadUnit = [&](IUnit *unit, int) {
        host.removeObject(valve);
        return unit;
    };
    EXPECT_EQ(undoOn(pump, valve), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco Pump.ocl"));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
    EXPECT_EQ(host.handlesAlive, 0);
}

TEST_F(UnCheckout, AUnitThatAnEarlierReloadReplacedIsSkippedAndItsNewObjectIsInTheList) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addClass("Valve");
    IUnit *newValve = nullptr;
    host.reload.reloadUnit = [&](IUnit *unit, int) {
        newValve = &host.replaceClass(valve);
        return unit;
    };
    EXPECT_EQ(undoOn(pump, valve), 1);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco Pump.ocl"));
    EXPECT_THAT(entries(units), testing::UnorderedElementsAre(&pump, newValve));
}

TEST_F(UnCheckout, AnEmptyListCallsNothingAndGivesNothing) {
    EXPECT_EQ(undo(units), 0);
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(UnCheckout, AListOfNothingButNullOpensReloadsAndDoesNotCloseThem) {
    units = list(static_cast<IUnit *>(nullptr));
    EXPECT_EQ(undo(units), 0);
    EXPECT_THAT(calls(), ElementsAre("reloads open"));
    EXPECT_TRUE(units.IsEmpty());
}

// --- Failures.

TEST_F(UnCheckout, WithoutAToolGivesOneDiagnosticAndTouchesNothing) {
    host.setTool("None");
    auto &pump = host.addUnit("Pump");
    units = list(&pump, &pump);
    EXPECT_EQ(undo(units), 0);
    ASSERT_EQ(diags.GetCount(), 1);
    EXPECT_EQ(diags.GetHead().getResult(), 0);
    EXPECT_EQ(units.GetCount(), 2) << "duplicates stay";
    EXPECT_THAT(calls(), IsEmpty());
    expectNothingIsLeft();
}

TEST_F(UnCheckout, AFailedExpansionReloadsNothingAndTheListStays) {
    setToolProperty(IPN::CMUnLockItem, "unco $nowhere");
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(undoOn(pump), 0);
    EXPECT_THAT(calls(), ElementsAre("reloads open", "reloads close"));
    EXPECT_THAT(entries(units), ElementsAre(&pump));
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(UnCheckout, ARunThatCouldNotBeMadeReloadsNothing) {
    breakExecute();
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(undoOn(pump), 0);
    EXPECT_THAT(logTexts(), ElementsAre("Executing the following command to uncheck out the file: unco Pump.ocl",
                                        "Uncheck out command returned the following: "));
    EXPECT_THAT(host.callsOf("can reload"), IsEmpty());
    EXPECT_THAT(host.callsOf("update"), IsEmpty());
    EXPECT_THAT(entries(units), ElementsAre(&pump));
}

TEST_F(UnCheckout, OnlyTheLastUnitDecidesTheResult) {
    setToolProperty(IPN::CMUnLockItem, "unco $extra $Unit");
    ExtraArgument extra;
    extra.answers = {false, true, true, false};
    args.AddTail(&extra);
    EXPECT_EQ(undoOn(host.addUnit("Pump"), host.addUnit("Valve")), 1);
    EXPECT_EQ(undoOn(host.addUnit("Tank"), host.addUnit("Pipe")), 0);
    EXPECT_THAT(host.worker.commands, ElementsAre("unco x Valve.ocl", "unco x Tank.ocl"));
    args.RemoveAll();
}

TEST_F(UnCheckout, AnExceptionOfTheHostLeavesNothingBehind) {
    host.reload.reloadUnit = [](IUnit *, int) -> IUnit * { throw std::runtime_error("host"); };
    units = list(&host.addUnit("Pump"));
    EXPECT_THROW(undo(units), std::runtime_error);
    expectNothingIsLeft();
}

} // namespace
