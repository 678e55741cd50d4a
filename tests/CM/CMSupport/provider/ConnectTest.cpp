// Tests the explicit connection: with a project that the user chooses, or with the one that is known.
#include "CM/CMSupport/provider/CMProviderFault.h"
#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/provider/SCCFacade.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/provider/ProviderFixture.h"
#include "tests/support/OutcomeRecorder.h"

#include <algorithm>

using resources::Text;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

constexpr unsigned int question = 292; // yes and no, with the second button as the default

class ConnectFixture : public ProviderFixture {
  protected:
    using ProviderFixture::ProviderFixture;

    int connect() { return SCCFacade::SCCConnectToArchive(units, args, diags); }
    /// The effects from the first one that begins with `start`.
    [[nodiscard]] std::vector<std::string> effectsFrom(const std::string &start) const {
        std::vector<std::string> all = effects();
        const auto first =
            std::ranges::find_if(all, [&start](const std::string &effect) { return effect.starts_with(start); });
        return {first, all.end()};
    }
    [[nodiscard]] std::string own() const { return unitsDirectory().string(); }

    CMUnitList units;
    CMArgumentList args;
    CMDiagnosticList diags;
    recording::Class &pump = host.addUnit("Pump");
};

// --- To a project that the user chooses.

class ConnectToChosen : public ConnectFixture {
  protected:
    using ConnectFixture::ConnectFixture;
};

TEST_F(ConnectToChosen, TakesThisOrder) {
    units = {&pump};
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(effects(),
                ElementsAre("log: Invoking LoadDll", "log: Invoking SccInitialize",
                            "provider SccInitialize context=null window=null caller=Orchard name= label= "
                            "capabilities=0 lengths=0",
                            "log: Invoking SccGetProjPath",
                            "provider SccGetProjPath context=1 window=null user= project= local=" + own() +
                                " aux= change=0 new=1",
                            "log: Invoking SccOpenProject",
                            "provider SccOpenProject context=1 window=null user= project=Chosen local=" + own() +
                                " aux=chosen/aux comment= textOutput=null flags=0",
                            "set property ProjName=Chosen",
                            "store property ConfigurationManagement/SCC/ProjName=Chosen on Plant",
                            "set property AuxProjPath=chosen/aux",
                            "store property ConfigurationManagement/SCC/AuxProjPath=chosen/aux on Plant",
                            "set scc archive Plant Chosen,chosen/aux",
                            std::string("ask 64: ") + resources::text(Text::providerConnected)));
    EXPECT_EQ(ownProperty("ProjName"), "Chosen");
    EXPECT_EQ(ownProperty("AuxProjPath"), "chosen/aux");
    EXPECT_EQ(pump.sccArchive, std::nullopt) << "the association is the project's";
    EXPECT_EQ(project().sccArchive, std::pair(CString("Chosen"), CString("chosen/aux")));
    EXPECT_THAT(contextNames(), ElementsAre("Chosen"));
    EXPECT_EQ(CMProperty::getIsConnected(), 1);
    EXPECT_EQ(CMProperty::SCCToolName, "Double");
    EXPECT_EQ(host.logsOpen, 0);
    EXPECT_TRUE(diags.IsEmpty());
    EXPECT_EQ(units.GetCount(), 1);
}

TEST_F(ConnectToChosen, StoresTheAssociationAsTextProperties) {
    connect();
    const IProperty *const own = project().findProperty(IPN::CM, "SCC", "ProjName", IProperty::local);
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(own->getType(), "String");
    EXPECT_EQ(own->getName(), "ProjName");
}

TEST_F(ConnectToChosen, ChangesPropertiesThatTheProjectHasAlready) {
    host.setProperty(project(), IPN::CM, "SCC", "ProjName", "");
    connect();
    EXPECT_EQ(ownProperty("ProjName"), "Chosen");
    EXPECT_THAT(host.calls, Contains("set property ProjName=Chosen"));
    EXPECT_THAT(host.calls, Not(Contains(HasSubstr("store property ConfigurationManagement/SCC/ProjName"))));
}

TEST_F(ConnectToChosen, PassesOnTheUserThatTheProviderHasChosen) {
    provider->chosenUser = "ann";
    connect();
    EXPECT_THAT(provider->calls.back(), HasSubstr(" user=ann "));
}

TEST_F(ConnectToChosen, StoresTheAuxPathThatOpeningHasChangedAndNotTheName) {
    provider->openedProject = "Other";
    provider->openedAuxPath = "other/aux";
    connect();
    EXPECT_EQ(ownProperty("ProjName"), "Chosen");
    EXPECT_EQ(ownProperty("AuxProjPath"), "other/aux");
    EXPECT_THAT(contextNames(), ElementsAre("Chosen"));
}

TEST_F(ConnectToChosen, SwitchesTheCancelModeBeforeTheChoice) {
    setProviderProperty("EnableSCCCancel", "True");
    connect();
    EXPECT_THAT(entries(), ElementsAre("SccInitialize", "SccSetOption", "SccGetProjPath", "SccOpenProject"));
    EXPECT_EQ(provider->calls[1], "SccSetOption context=1 option=3 value=0");
}

TEST_F(ConnectToChosen, RemembersTheCapabilities) {
    provider->capabilities = SCC_CAP_REENTRANT | SCC_CAP_COMMENTCHECKOUT;
    connect();
    EXPECT_EQ(CMProperty::isSetSCC_CAP_REENTRANT(0), 1);
    EXPECT_EQ(CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(0), 1);
}

TEST_F(ConnectToChosen, EndsSilentlyWithoutAProject) {
    host.model.activeProject = nullptr;
    units = {&pump};
    EXPECT_EQ(connect(), 0);
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(ConnectToChosen, EndsSilentlyWithANullUnit) {
    units = {nullptr};
    EXPECT_EQ(connect(), 0);
    EXPECT_THAT(host.calls, IsEmpty());
}

// --- A provider whose projects have no names.

class ConnectToNameless : public ConnectFixture {
  protected:
    ConnectToNameless() { provider->chosenProject = provider->chosenAuxPath = ""; }
};

TEST_F(ConnectToNameless, OfAnotherProviderLeavesTheUnitsUnconnected) {
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(ownProperty("ProjName"), "");
    EXPECT_EQ(ownProperty("AuxProjPath"), "");
    host.clearRecords();
    pvContextStruct *context = nullptr;
    SCCConnectToCMRepository().getSccContext(context, &pump);
    EXPECT_EQ(context, nullptr);
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(host.messages.shown[0].text, resources::text(Text::providerNotConnected));
}

TEST_F(ConnectToNameless, OfBasaltGoesByTheNameThatTheProviderWrites) {
    provider->name = "BASALT";
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(ownProperty("ProjName"), "BASALT");
    EXPECT_EQ(ownProperty("AuxProjPath"), "BASALT");
    EXPECT_THAT(contextNames(), ElementsAre("")) << "named before";
}

TEST_F(ConnectToNameless, TheProviderIsTheOneOfTheProperty) {
    setProviderProperty("BaslatSCCName", "DOUBLE");
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(ownProperty("ProjName"), "Double");
    provider->name = "basalt";
    setProviderProperty("ProjName", "");
    host.setProperty(project(), IPN::CM, "SCC", "ProjName", "");
    project().sccArchive.reset();
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(ownProperty("ProjName"), "") << "the fallback doesn't count then";
}

TEST_F(ConnectToNameless, OneOfTheTwoTextsIsAName) {
    provider->name = "basalt";
    provider->chosenAuxPath = "aux";
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(ownProperty("ProjName"), "");
    EXPECT_EQ(ownProperty("AuxProjPath"), "aux");
    project().sccArchive.reset();
    provider->chosenProject = "Mill";
    provider->chosenAuxPath = "";
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(ownProperty("ProjName"), "Mill");
    EXPECT_EQ(ownProperty("AuxProjPath"), "");
}

// --- Without the entry that lets the user choose.

class ConnectWithoutChoice : public ConnectFixture {
  protected:
    ConnectWithoutChoice() : ConnectFixture(DOUBLE_PROVIDER_WITHOUT_CHOICE) {}
};

TEST_F(ConnectWithoutChoice, GoesOnWithTheTextsAsTheyWere) {
    pvContextStruct *context = nullptr;
    CString name = "Plant";
    CString aux = "aux";
    EXPECT_EQ(SCCConnectToCMRepository().connectIt(&pump, context, name, aux, 1), 1);
    EXPECT_THAT(entries(), ElementsAre("SccInitialize", "SccOpenProject"));
    EXPECT_THAT(provider->calls.back(), HasSubstr("project=Plant"));
    EXPECT_EQ(name, "Plant");
    EXPECT_EQ(aux, "aux");
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

// --- Failures.

class ConnectFailure : public ConnectFixture {
  protected:
    void expectFailure(const char *message) {
        EXPECT_EQ(connect(), 0);
        ASSERT_EQ(host.messages.shown.size(), 1U);
        EXPECT_THAT(host.messages.shown[0].text.str(), HasSubstr(message));
        EXPECT_THAT(contextNames(), IsEmpty());
        EXPECT_EQ(ownProperty("ProjName"), "(none)");
        EXPECT_EQ(ownProperty("AuxProjPath"), "(none)");
        EXPECT_EQ(project().sccArchive, std::nullopt);
        EXPECT_EQ(CMProperty::getIsConnected(), 0);
        EXPECT_THAT(entries(), Not(Contains("SccUninitialize")));
    }
};

TEST_F(ConnectFailure, OfSccInitializeEndsIt) {
    provider->answer("SccInitialize", SCC_E_NOTAUTHORIZED);
    expectFailure(resources::text(Text::resultNotAuthorized));
    EXPECT_THAT(entries(), ElementsAre("SccInitialize"));
}

TEST_F(ConnectFailure, OfSccGetProjPathEndsIt) {
    provider->answer("SccGetProjPath", SCC_I_OPERATIONCANCELED);
    expectFailure(resources::text(Text::resultCancelled));
    EXPECT_THAT(entries(), ElementsAre("SccInitialize", "SccGetProjPath"));
    EXPECT_EQ(host.messages.shown[0].flags, MB_ICONEXCLAMATION);
}

TEST_F(ConnectFailure, OfSccOpenProjectEndsIt) {
    provider->capabilities = SCC_CAP_REENTRANT;
    provider->answer("SccOpenProject", SCC_E_ACCESSFAILURE);
    expectFailure(resources::text(Text::resultAccessFailure));
    EXPECT_EQ(CMProperty::isSetSCC_CAP_REENTRANT(0), 0);
}

TEST_F(ConnectFailure, ACrashOfTheProviderLeavesTheCallAsAFault) {
    provider->answers["SccGetProjPath"] = crash;
    EXPECT_THROW(connect(), CMProviderFault);
    EXPECT_EQ(host.logsOpen, 0);
    EXPECT_EQ(ownProperty("ProjName"), "(none)");
}

// --- The other contexts.

class ConnectClosing : public ConnectFixture {
  protected:
    ConnectClosing() {
        pump.setSccArchive("Mill", "");
        pvContextStruct *context = nullptr;
        SCCConnectToCMRepository().getSccContext(context, &pump);
        pump.setSccArchive("Yard", "");
        SCCConnectToCMRepository().getSccContext(context, &pump);
        provider->calls.clear();
        host.clearRecords();
    }
};

TEST_F(ConnectClosing, ClosesAllContextsOfAProviderThatIsNotReentrant) {
    CMProperty::addPvStruct(); // one without a provider context
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(entries(), ElementsAre("SccCloseProject", "SccUninitialize", "SccCloseProject", "SccUninitialize",
                                       "SccInitialize", "SccGetProjPath", "SccOpenProject"));
    const std::vector<std::string> all = effects();
    EXPECT_THAT(std::vector(all.begin(), all.begin() + 9),
                ElementsAre("log: Invoking SccCloseProject", "provider SccCloseProject context=1",
                            "log: Invoking SccUninitialize", "provider SccUninitialize context=1",
                            "log: Invoking SccCloseProject", "provider SccCloseProject context=2",
                            "log: Invoking SccUninitialize", "provider SccUninitialize context=2",
                            "log: Invoking SccInitialize"));
    EXPECT_THAT(contextNames(), ElementsAre("Chosen"));
}

TEST_F(ConnectClosing, KeepsTheContextsOfAReentrantProvider) {
    CMProperty::isSetSCC_CAP_REENTRANT(1);
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(entries(), ElementsAre("SccInitialize", "SccGetProjPath", "SccOpenProject"));
    EXPECT_THAT(contextNames(), ElementsAre("Mill", "Yard", "Chosen"));
}

TEST_F(ConnectClosing, KeepsThemBeforeTheFirstConnection) {
    CMProperty::setIsConnected(0);
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(contextNames(), ElementsAre("Mill", "Yard", "Chosen"));
}

TEST_F(ConnectClosing, KeepsThemIfAnExistingProjectIsAssociated) {
    pvContextStruct *context = nullptr;
    CString name = "Proposal";
    CString aux = "proposal/aux";
    EXPECT_EQ(SCCConnectToCMRepository().connectIt(&pump, context, name, aux, 0), 1);
    EXPECT_THAT(provider->calls[1], HasSubstr("project=Proposal"));
    EXPECT_THAT(provider->calls[1], HasSubstr("aux=proposal/aux change=0 new=0"));
    EXPECT_EQ(name, "Chosen");
    EXPECT_EQ(aux, "chosen/aux");
    EXPECT_EQ(context, CMProperty::getPvContextStructList().GetTail());
    EXPECT_THAT(contextNames(), ElementsAre("Mill", "Yard", "Chosen"));
}

TEST_F(ConnectClosing, ClosesThemEvenIfNoProjectIsOpen) {
    host.model.activeProject = nullptr;
    pvContextStruct *context = CMProperty::getPvContextStructList().GetTail();
    CString name;
    CString aux;
    EXPECT_EQ(SCCConnectToCMRepository().connectIt(&pump, context, name, aux, 1), 0);
    EXPECT_EQ(context, nullptr);
    EXPECT_THAT(contextNames(), IsEmpty());
    EXPECT_THAT(entries(), SizeIs(4));
}

// --- With an association.

class ConnectAgain : public ConnectFixture {
  protected:
    ConnectAgain() { associate("Plant", "plant/aux"); }
    void openUnit(const CString &projName) {
        pump.setSccArchive(projName, "");
        pvContextStruct *context = nullptr;
        SCCConnectToCMRepository().getSccContext(context, &pump);
        pump.sccArchive.reset();
    }
};

TEST_F(ConnectAgain, AsksWithNoAsTheDefault) {
    connect();
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(host.messages.shown[0].text, resources::text(Text::providerConnectAgain));
    EXPECT_EQ(host.messages.shown[0].flags, question);
}

TEST_F(ConnectAgain, AnswerNoOpensTheKnownProject) {
    host.messages.answers = {IDNO};
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(entries(), ElementsAre("SccInitialize", "SccOpenProject"));
    EXPECT_THAT(provider->calls.back(), HasSubstr("project=Plant"));
    EXPECT_THAT(contextNames(), ElementsAre("Plant"));
    EXPECT_EQ(CMProperty::getIsConnected(), 1);
    EXPECT_EQ(ownProperty("ProjName"), "(none)") << "the association stays as it is";
    EXPECT_EQ(host.messages.shown.size(), 1U) << "no notice of success";
}

TEST_F(ConnectAgain, AnswerNoKeepsAContextThatIsOpen) {
    openUnit("Plant");
    provider->calls.clear();
    EXPECT_EQ(connect(), 1);
    EXPECT_THAT(provider->calls, IsEmpty());
}

TEST_F(ConnectAgain, AnswerNoFailsIfTheKnownProjectDoesNotOpen) {
    provider->answer("SccOpenProject", SCC_E_UNKNOWNPROJECT);
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(CMProperty::getIsConnected(), 0);
    EXPECT_THAT(contextNames(), IsEmpty());
}

TEST_F(ConnectAgain, AnswerYesClosesTheContextAndForgetsTheAssociationBeforeTheChoice) {
    openUnit("Plant");
    CMProperty::isSetSCC_CAP_REENTRANT(1);
    units = {&pump};
    host.clearRecords();
    host.messages.answers = {IDYES};
    EXPECT_EQ(connect(), 1);
    const std::vector<std::string> all = effectsFrom("ask 292");
    ASSERT_GT(all.size(), 11U);
    EXPECT_THAT(
        std::vector(all.begin() + 1, all.begin() + 11),
        ElementsAre(
            "log: Invoking SccCloseProject", "provider SccCloseProject context=1", "log: Invoking SccUninitialize",
            "provider SccUninitialize context=1",
            "set property ProjName=", "store property ConfigurationManagement/SCC/ProjName= on Plant",
            "set property AuxProjPath=", "store property ConfigurationManagement/SCC/AuxProjPath= on Plant",
            "set scc archive Pump ,", "log: Invoking SccInitialize"));
    EXPECT_THAT(contextNames(), ElementsAre("Chosen"));
    EXPECT_EQ(ownProperty("ProjName"), "Chosen");
}

TEST_F(ConnectAgain, AnswerYesProposesTheOldProject) {
    host.messages.answers = {IDYES};
    connect();
    EXPECT_THAT(provider->calls[1], HasSubstr("SccGetProjPath"));
    EXPECT_THAT(provider->calls[1], HasSubstr("project=Plant"));
    EXPECT_THAT(provider->calls[1], HasSubstr("aux=plant/aux"));
}

TEST_F(ConnectAgain, AnswerYesForgetsTheAssociationEvenIfNothingIsChosen) {
    provider->answer("SccGetProjPath", SCC_I_OPERATIONCANCELED);
    host.messages.answers = {IDYES};
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(ownProperty("ProjName"), "");
    EXPECT_EQ(ownProperty("AuxProjPath"), "");
}

TEST_F(ConnectAgain, AsksForTheAssociationOfTheFirstUnit) {
    associate("", "");
    auto &valve = host.addUnit("Valve");
    valve.setSccArchive("Mill", "");
    units = {&valve, &pump};
    host.messages.answers = {IDYES};
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(host.messages.shown.front().flags, question);
    EXPECT_EQ(valve.sccArchive, std::nullopt);
    EXPECT_EQ(project().sccArchive->first, "Chosen");
}

TEST_F(ConnectAgain, TakesTheLastRecordOffTheListWhicheverItCloses) {
    openUnit("Plant");
    openUnit("Mill");
    CMProperty::isSetSCC_CAP_REENTRANT(1);
    const pvContextStruct *const mill = CMProperty::getPvContextStructList().GetTail();
    provider->calls.clear();
    host.messages.answers = {IDYES};
    EXPECT_EQ(connect(), 1);
    EXPECT_EQ(provider->calls[0], "SccCloseProject context=1");
    EXPECT_EQ(provider->calls[1], "SccUninitialize context=1");
    EXPECT_THAT(contextNames(), ElementsAre("(null)", "Chosen"));
    EXPECT_EQ(mill->getpvContextName(), "Mill") << "it is not freed";
}

// --- Outcomes.

TEST_F(ConnectAgain, ReportsItsCallsAsTheOutcomeOfTheCall) {
    support::OutcomeRecorder outcomes;
    connect();
    ASSERT_EQ(outcomes.outcomes.size(), 1U);
    EXPECT_EQ(outcomes.last().kind, CMOutcome::Kind::done);
    EXPECT_EQ(outcomes.last().unit, nullptr);
    ASSERT_EQ(outcomes.last().runs.size(), 2U);
    EXPECT_EQ(outcomes.last().runs[1].command, "SccOpenProject");
}

TEST_F(ConnectFailure, IsReportedWithItsReason) {
    support::OutcomeRecorder outcomes;
    provider->answer("SccGetProjPath", SCC_I_OPERATIONCANCELED);
    connect();
    EXPECT_EQ(outcomes.last().kind, CMOutcome::Kind::declined);
    provider->answer("SccGetProjPath", SCC_E_CONNECTIONFAILURE);
    connect();
    EXPECT_EQ(outcomes.last().kind, CMOutcome::Kind::failed);
    EXPECT_EQ(outcomes.last().reason, resources::text(Text::resultConnectionFailure));
    EXPECT_EQ(outcomes.last().runs.back().result, SCC_E_CONNECTIONFAILURE);
    provider->answer("SccGetProjPath", 77);
    connect();
    EXPECT_THAT(outcomes.last().reason.str(), HasSubstr("77"));
}

TEST_F(ConnectFailure, OfTheLibraryIsReportedThoughTheCallSucceeds) {
    registerLibrary(DOUBLE_PROVIDER_WITHOUT_START);
    support::OutcomeRecorder outcomes;
    EXPECT_EQ(connect(), 1) << "required";
    EXPECT_EQ(outcomes.last().kind, CMOutcome::Kind::noTool);
}

} // namespace
