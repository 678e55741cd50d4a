// Tests the refresh of states after a project is opened.
#include "CM/CMSupport/dispatch/StatusRefresh.h"

#include "CM/CMSupport/core/CMTraitFacade.h"
#include "CM/CMSupport/core/RepositoryFiles.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

#include <map>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A provider that records its calls and sets the state that a test chooses.
class RecordingProvider : public StatusProvider {
  public:
    std::vector<const IUnit *> contextsAsked;
    std::map<const IUnit *, pvContextStruct *> contexts; ///< others than the usual one; null for none
    std::vector<std::vector<IUnit *>> queries;
    void *contextOfQuery = nullptr;
    long state = 1;
    pvContextStruct usual;

    pvContextStruct *contextOf(IUnit &unit) override {
        contextsAsked.push_back(&unit);
        const auto found = contexts.find(&unit);
        return found == contexts.end() ? &usual : found->second;
    }
    void queryAndSetStatus(CMUnitList &units, void *context) override {
        queries.emplace_back(units.begin(), units.end());
        contextOfQuery = context;
        for (IUnit *const unit : units) {
            unit->setCMState(state);
        }
    }
};

class StatusRefresh : public CoreFixture {
  protected:
    StatusRefresh() {
        setProviderRoute();
        project().showStatus = true;
        CMProperty::useSccCompliantTool(); // the message that there is no provider comes here
        host.clearRecords();
        host.model.repositoryFiles.RemoveAll(); // the objects of the fixture's own units
    }
    void setWhen(const CString &value) { host.setToolDefault("SCC", "RefreshCMStatusAtProjectOpenup", value); }
    static constexpr auto *wanted = dispatch::isStatusRefreshWanted;
    void refresh() { dispatch::refreshStatus(provider); }

    RecordingProvider provider;
};

// --- Whether it is wanted.

TEST_F(StatusRefresh, IsWantedIfTheToolSaysYesInAnyLetters) {
    for (const char *const yes : {"Yes", "yes", "YES"}) {
        setWhen(yes);
        EXPECT_TRUE(wanted()) << yes;
    }
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(StatusRefresh, IsNotWantedForAnyOtherValueOrWithoutOne) {
    EXPECT_FALSE(wanted());
    for (const char *const other : {"", "No", "True", "1", "Yes please", "AskUser"}) {
        setWhen(other);
        EXPECT_FALSE(wanted()) << other;
    }
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(StatusRefresh, AsksTheUserIfTheToolSaysSo) {
    for (const char *const ask : {"Ask User", "ask user"}) {
        setWhen(ask);
        host.clearRecords();
        host.messages.answers = {IDYES};
        EXPECT_TRUE(wanted());
        ASSERT_EQ(host.messages.shown.size(), 1U);
        EXPECT_EQ(host.messages.shown[0].text, resources::text(resources::Text::statusRefreshQuestion));
        EXPECT_EQ(host.messages.shown[0].flags, MB_YESNO | MB_ICONQUESTION);
        EXPECT_EQ(host.messages.shown[0].level, messageLevelDefault);
        EXPECT_TRUE(host.messages.shown[0].question);
    }
    host.messages.answers = {IDNO};
    EXPECT_FALSE(wanted());
    host.messages.answers = {IDOK};
    EXPECT_FALSE(wanted());
}

TEST_F(StatusRefresh, IsNeverWantedOnTheCommandRoute) {
    setGeneral("UseSCCtool", "No");
    CMProperty::useSccCompliantTool();
    for (const char *const when : {"Yes", "Ask User"}) {
        setToolProperty("RefreshCMStatusAtProjectOpenup", when);
        setWhen(when);
        EXPECT_FALSE(wanted());
    }
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(StatusRefresh, IsNotWantedWhileStatesAreNotOnDisplay) {
    setWhen("Ask User");
    project().showStatus = false;
    EXPECT_FALSE(wanted());
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(StatusRefresh, WhileStatesAreNotOnDisplayNoProviderIsLookedFor) {
    setWhen("Yes");
    host.model.activeProject = nullptr;
    CMProperty::ResetIfActiveProjectChanged(); // makes the library choose the route again
    host.model.activeProject = &project();
    for (const bool onDisplay : {false, true}) {
        project().showStatus = onDisplay;
        EXPECT_EQ(wanted(), onDisplay);
        EXPECT_EQ(host.messages.shown.size(), onDisplay ? 1U : 0U) << "no provider is registered";
    }
}

// --- Of which units.

TEST_F(StatusRefresh, AsksForAllFilesInOneQuery) {
    auto &pump = host.addUnit("Pump");
    auto &motor = host.addSubsystem("Motor");
    auto &notes = host.addEmbeddedFile("Notes.doc", &motor);
    refresh();
    ASSERT_EQ(provider.queries.size(), 1U);
    EXPECT_THAT(provider.queries[0], ElementsAre(&pump, &motor, &notes));
    EXPECT_EQ(pump.cmState, 1);
    EXPECT_EQ(notes.cmState, 1);
}

TEST_F(StatusRefresh, PassesOverReferences) {
    auto &pump = host.addUnit("Pump");
    host.addUnit("Valve").reference = true;
    refresh();
    EXPECT_THAT(provider.contextsAsked, ElementsAre(&pump));
}

TEST_F(StatusRefresh, PassesOverEmbeddedFilesOfReferencesOnly) {
    auto &motor = host.addSubsystem("Motor");
    auto &notes = host.addEmbeddedFile("Notes.doc", &motor);
    notes.saveUnit = false; // the subsystem's file holds it
    EXPECT_TRUE(isRepositoryFileForCM(notes));
    motor.reference = true;
    EXPECT_FALSE(isRepositoryFileForCM(notes));
    auto &pump = host.addUnit("Pump", &motor);
    pump.saveUnit = false;
    EXPECT_TRUE(isRepositoryFileForCM(pump)) << "only an embedded file goes by the unit that holds it";
}

TEST_F(StatusRefresh, AnEmbeddedFileThatNoUnitHoldsCounts) {
    auto &notes = host.addEmbeddedFile("Notes.doc");
    notes.saveUnit = false;
    notes.owner = nullptr;
    EXPECT_TRUE(isRepositoryFileForCM(notes));
    notes.owner = &project();
}

TEST_F(StatusRefresh, PassesOverTheWorkspace) {
    host.model.repositoryFiles.AddTail(host.model.workspace);
    auto &pump = host.addUnit("Pump");
    refresh();
    EXPECT_THAT(provider.contextsAsked, ElementsAre(&pump));
}

TEST_F(StatusRefresh, PassesOverHiddenSubsystemsButNotWhatIsInThem) {
    auto &motor = host.addSubsystem("Motor");
    motor.hiddenFromCM = true;
    auto &pump = host.addUnit("Pump", &motor);
    auto &fan = host.addSubsystem("Fan");
    refresh();
    EXPECT_THAT(provider.contextsAsked, ElementsAre(&pump, &fan));
}

// --- Contexts.

TEST_F(StatusRefresh, TheFirstUnitWithoutAContextEndsTheWalk) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    auto &tank = host.addUnit("Tank");
    provider.contexts[&valve] = nullptr;
    refresh();
    EXPECT_THAT(provider.contextsAsked, ElementsAre(&pump, &valve));
    ASSERT_EQ(provider.queries.size(), 1U);
    EXPECT_THAT(provider.queries[0], ElementsAre(&pump));
    EXPECT_EQ(tank.cmState, 0);
}

TEST_F(StatusRefresh, WithoutAnyContextNothingIsAsked) {
    provider.contexts[&host.addUnit("Pump")] = nullptr;
    host.addUnit("Valve");
    refresh();
    EXPECT_EQ(provider.contextsAsked.size(), 1U);
    EXPECT_THAT(provider.queries, IsEmpty());
}

TEST_F(StatusRefresh, WithoutUnitsNothingIsAsked) {
    refresh();
    EXPECT_THAT(provider.queries, IsEmpty());
}

TEST_F(StatusRefresh, OfAHostWithoutAListOfFilesAsksNothing) {
    host.addUnit("Pump");
    host.model.hasRepositoryFiles = false;
    refresh();
    EXPECT_THAT(provider.contextsAsked, IsEmpty());
    EXPECT_THAT(provider.queries, IsEmpty());
}

TEST_F(StatusRefresh, AsksWithTheContextOfTheLastUnit) {
    host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    pvContextStruct other;
    int opened = 0;
    *other.getpvContextPtrPtr() = &opened;
    provider.contexts[&valve] = &other;
    refresh();
    EXPECT_EQ(provider.contextOfQuery, &opened);
}

// --- Only if it is wanted.

class StatusRefreshIfWanted : public StatusRefresh {
  protected:
    StatusRefreshIfWanted() {
        setWhen("Ask User");
        pump.cmState = 3;
    }
    void expectNothingWasAsked() {
        dispatch::refreshStatusIfWanted(provider);
        EXPECT_THAT(provider.contextsAsked, IsEmpty());
        EXPECT_THAT(provider.queries, IsEmpty());
        EXPECT_EQ(pump.cmState, 3);
    }
    recording::Class &pump = host.addUnit("Pump");
};

TEST_F(StatusRefreshIfWanted, ARefusalLeavesAllStatesAsTheyAre) {
    host.messages.answers = {IDNO};
    expectNothingWasAsked();
    EXPECT_EQ(host.messages.shown.size(), 1U);
}

TEST_F(StatusRefreshIfWanted, AConsentSetsThem) {
    host.messages.answers = {IDYES};
    dispatch::refreshStatusIfWanted(provider);
    EXPECT_THAT(provider.contextsAsked, ElementsAre(&pump));
    EXPECT_EQ(pump.cmState, 1);
}

TEST_F(StatusRefreshIfWanted, OnTheCommandRouteNothingIsAskedWhateverThePropertySays) {
    setGeneral("UseSCCtool", "No");
    CMProperty::useSccCompliantTool();
    setWhen("Yes");
    setToolProperty("RefreshCMStatusAtProjectOpenup", "Yes");
    expectNothingWasAsked();
}

TEST_F(StatusRefreshIfWanted, WhileStatesAreNotOnDisplayNothingIsAsked) {
    setWhen("Yes");
    project().showStatus = false;
    expectNothingWasAsked();
}

// --- The host's entries.

TEST_F(StatusRefresh, TheHostGetsTheDefaultHeaderThroughTheSameObject) {
    write(scratch / "header.txt", "$Id$\n");
    host.setToolDefault("SCC", IPN::CMHeaderFile, (scratch / "header.txt").string());
    IBaseCMFacade &facade = theCMFacade;
    EXPECT_EQ(facade.getTheDefaultHeader(), "$Id$\n");
}

TEST_F(StatusRefresh, TheEntryOfTheHostAsksItsQuestionOnTheProviderRouteOnly) {
    IBaseCMFacade &facade = theCMFacade;
    auto &pump = host.addUnit("Pump");
    pump.cmState = 3;
    setWhen("Ask User");
    facade.RefreshCMStatus();
    EXPECT_EQ(host.messages.shown.size(), 1U);
    host.messages.answers = {IDYES};
    facade.RefreshCMStatus();
    ASSERT_EQ(host.messages.shown.size(), 3U);
    EXPECT_EQ(host.messages.shown[2].text, resources::text(resources::Text::providerNotConnected));
    setGeneral("UseSCCtool", "No");
    CMProperty::useSccCompliantTool();
    setToolProperty("RefreshCMStatusAtProjectOpenup", "Ask User");
    facade.RefreshCMStatus();
    EXPECT_EQ(host.messages.shown.size(), 3U);
    EXPECT_EQ(pump.cmState, 3);
}

} // namespace
