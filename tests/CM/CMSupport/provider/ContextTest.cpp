// Tests the context of a unit, and the opening of a provider project whose name is known.
#include "CM/CMSupport/provider/SCCConnectToCMRepository.h"
#include "CM/CMSupport/provider/SCCTextOutProc.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/provider/ProviderFixture.h"
#include "tests/support/OutcomeRecorder.h"

using resources::Text;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class Context : public ProviderFixture {
  protected:
    using ProviderFixture::ProviderFixture;

    int get(IUnit *unit) { return SCCConnectToCMRepository().getSccContext(context, unit); }
    [[nodiscard]] std::string units() const { return unitsDirectory().string(); }

    pvContextStruct *context = nullptr;
    recording::Class &pump = host.addUnit("Pump");
};

TEST_F(Context, IsOpenedWithoutAQuestionInThisOrder) {
    associate("Plant", "plant/aux");
    host.clearRecords();
    EXPECT_EQ(get(&pump), 1);
    EXPECT_THAT(effects(),
                ElementsAre("faults off", "log: Invoking LoadDll", "log: Invoking SccInitialize",
                            "provider SccInitialize context=null window=null caller=Orchard name= label= "
                            "capabilities=0 lengths=0",
                            "log: Scc dll returned 0 from SccInitialize", "log: Invoking SccOpenProject",
                            "provider SccOpenProject context=1 window=null user= project=Plant local=" + units() +
                                " aux=plant/aux comment= textOutput=null flags=0",
                            "log: Scc dll returned 0 from SccOpenProject", "faults on"));
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(context->getpvContextName(), "Plant");
    EXPECT_EQ(provider->contexts.at(context->getpvContextPtr()), 1);
    EXPECT_EQ(CMProperty::getPvContextStructList().GetTail(), context);
    EXPECT_EQ(CMProperty::getIsLoaded(), 1);
    EXPECT_EQ(CMProperty::getIsConnected(), 1);
    EXPECT_EQ(host.places.disabledFaults, 0);
    EXPECT_EQ(host.logsOpen, 0);
}

TEST_F(Context, IsSharedByTheUnitsOfOneProject) {
    associate("Plant");
    get(&pump);
    const pvContextStruct *const first = context;
    EXPECT_EQ(get(&host.addUnit("Valve")), 1);
    EXPECT_EQ(context, first);
    EXPECT_THAT(entries(), ElementsAre("SccInitialize", "SccOpenProject"));
}

TEST_F(Context, IsSharedByProjectsWhoseNamesDifferOnlyInCase) {
    associate("Plant");
    get(&pump);
    pump.setSccArchive("PLANT", "");
    get(&pump);
    EXPECT_THAT(contextNames(), ElementsAre("Plant"));
}

TEST_F(Context, OfAUnitWithItsOwnAssociationIsASecondOne) {
    associate("Plant");
    get(&host.addUnit("Valve"));
    pump.setSccArchive("Mill", "mill/aux");
    EXPECT_EQ(get(&pump), 1);
    EXPECT_THAT(contextNames(), ElementsAre("Plant", "Mill"));
    EXPECT_EQ(context->getpvContextName(), "Mill");
    EXPECT_THAT(provider->calls.back(), HasSubstr("project=Mill"));
    EXPECT_THAT(provider->calls.back(), HasSubstr("aux=mill/aux"));
}

TEST_F(Context, LoadsTheLibraryOnce) {
    associate("Plant");
    get(&pump);
    pump.setSccArchive("Mill", "");
    get(&pump);
    EXPECT_THAT(host.callsOf("log 4 ../CM/CMSupport/SCCConnectToCMRepository: Invoking LoadDll"),
                testing::SizeIs(1));
}

TEST_F(Context, OfNoUnitIsThatOfTheProject) {
    associate("Plant");
    pump.setSccArchive("Mill", "");
    EXPECT_EQ(get(nullptr), 1);
    EXPECT_EQ(context->getpvContextName(), "Plant");
}

TEST_F(Context, WithoutAProjectIsNullAndNothingHappens) {
    pvContextStruct old;
    context = &old;
    host.model.activeProject = nullptr;
    EXPECT_EQ(get(nullptr), 0);
    EXPECT_EQ(context, nullptr);
    EXPECT_THAT(host.calls, IsEmpty());
    EXPECT_EQ(host.places.disabledFaults, 0);
}

TEST_F(Context, WithoutAnAssociationIsNullAndTheUserIsTold) {
    pvContextStruct old;
    context = &old;
    EXPECT_EQ(get(&pump), 0);
    EXPECT_EQ(context, nullptr);
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(host.messages.shown[0].text, resources::text(Text::providerNotConnected));
    EXPECT_EQ(host.messages.shown[0].flags, MB_ICONHAND);
    EXPECT_EQ(host.messages.shown[0].level, messageLevelDefault);
    EXPECT_THAT(provider->calls, IsEmpty());
    EXPECT_EQ(host.places.disabledFaults, 1) << "required: faults stay disabled on this way out";
}

TEST_F(Context, UsesTheWorkingDirectoryOfTheOldLayout) {
    associate("Plant");
    host.setToolDefault("SCC", "SupportTreeRepository", "Yes");
    get(&pump);
    EXPECT_THAT(provider->calls.back(), HasSubstr("local=" + scratch.string() + " "));
}

TEST_F(Context, UsesTheProjectsOwnDirectoryIfThereIsNoWorkingDirectory) {
    associate("Plant");
    host.setToolDefault("SCC", "SupportTreeRepository", "Yes");
    project().projectFileDirectory.Empty();
    get(&pump);
    EXPECT_THAT(provider->calls.back(), HasSubstr("local=" + units() + " "));
}

TEST_F(Context, GivesTheTopMostWindowToTheProvider) {
    associate("Plant");
    int handle = 0;
    host.mainWindow.exists = true;
    host.mainWindow.handle = &handle;
    get(&pump);
    ASSERT_EQ(provider->calls.size(), 2U);
    EXPECT_THAT(provider->calls[0], HasSubstr("window=given"));
    EXPECT_THAT(provider->calls[1], HasSubstr("window=given"));
}

TEST_F(Context, GivesATextOutputFunctionOnlyIfTheProjectRedirectsIt) {
    associate("Plant");
    setProviderProperty("RedirectOutputToOrchard", "True");
    get(&pump);
    EXPECT_EQ(provider->textOutput, SCCTextOutProc::IDETextOutProc);
}

TEST_F(Context, SwitchesTheCancelModeBetweenTheTwoCallsIfTheProjectWantsThat) {
    associate("Plant");
    setProviderProperty("EnableSCCCancel", "True");
    provider->answer("SccSetOption", SCC_E_OPNOTSUPPORTED);
    EXPECT_EQ(get(&pump), 1) << "what it returns doesn't count";
    EXPECT_THAT(entries(), ElementsAre("SccInitialize", "SccSetOption", "SccOpenProject"));
    EXPECT_EQ(provider->calls[1], "SccSetOption context=1 option=3 value=0");
    EXPECT_THAT(effects(), Contains("log: Invoking SccSetOption"));
    EXPECT_THAT(effects(), testing::Not(Contains(HasSubstr("from SccSetOption"))));
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(Context, TakesTheNameOfTheProvider) {
    associate("Plant");
    provider->name = "Basalt";
    get(&pump);
    EXPECT_EQ(CMProperty::SCCToolName, "Basalt");
}

TEST_F(Context, CutsANameThatIsLongerThanTheApiAllows) {
    associate("Plant");
    provider->name = std::string(500, 'n');
    EXPECT_EQ(get(&pump), 1);
    EXPECT_EQ(CMProperty::SCCToolName, std::string(31, 'n'));
}

TEST_F(Context, RemembersTheCapabilitiesOfAProviderOnceForAll) {
    associate("Plant");
    provider->capabilities = SCC_CAP_REENTRANT | SCC_CAP_RENAME;
    get(&pump);
    EXPECT_EQ(CMProperty::isSetSCC_CAP_REENTRANT(0), 1);
    EXPECT_EQ(CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(0), 0);
    provider->capabilities = SCC_CAP_COMMENTCHECKOUT;
    pump.setSccArchive("Mill", "");
    get(&pump);
    EXPECT_EQ(CMProperty::isSetSCC_CAP_REENTRANT(0), 1) << "never cleared";
    EXPECT_EQ(CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(0), 1);
}

TEST_F(Context, KeepsTheNameOfAProjectThatTheProviderWritesOver) {
    associate("Plant");
    provider->openedProject = "Something else";
    get(&pump);
    EXPECT_EQ(context->getpvContextName(), "Plant");
    get(&pump);
    EXPECT_EQ(provider->calls.size(), 2U);
}

// --- Failures.

TEST_F(Context, OfAProviderThatDoesNotInitializeIsARecordOutsideTheList) {
    associate("Plant");
    provider->name = "Broken";
    provider->answer("SccInitialize", SCC_E_INITIALIZEFAILED);
    EXPECT_EQ(get(&pump), 0);
    EXPECT_THAT(entries(), ElementsAre("SccInitialize"));
    EXPECT_EQ(CMProperty::SCCToolName, "Broken") << "whatever the result is";
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_EQ(host.messages.shown[0].flags, MB_ICONHAND);
    EXPECT_THAT(host.messages.shown[0].text.str(), HasSubstr(resources::text(Text::resultInitializeFailed)));
    EXPECT_THAT(effects(), Contains("log: Scc dll returned -1 from SccInitialize"));
    EXPECT_THAT(contextNames(), IsEmpty());
    ASSERT_NE(context, nullptr) << "required: callers continue with it";
    EXPECT_EQ(provider->contexts.at(context->getpvContextPtr()), 1);
    EXPECT_EQ(CMProperty::getIsConnected(), 0);
    EXPECT_EQ(host.places.disabledFaults, 1) << "required: faults stay disabled on this way out";
}

TEST_F(Context, OfAProjectThatDoesNotOpenIsARecordOutsideTheList) {
    associate("Plant");
    provider->capabilities = SCC_CAP_REENTRANT | SCC_CAP_COMMENTCHECKOUT;
    provider->answer("SccOpenProject", SCC_E_UNKNOWNPROJECT);
    EXPECT_EQ(get(&pump), 0);
    EXPECT_THAT(entries(), ElementsAre("SccInitialize", "SccOpenProject")) << "it isn't uninitialised";
    EXPECT_EQ(host.messages.shown.size(), 1U);
    EXPECT_THAT(effects(), Contains("log: Scc dll returned -2 from SccOpenProject"));
    EXPECT_THAT(contextNames(), IsEmpty());
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(context->getpvContextName(), "");
    EXPECT_EQ(CMProperty::isSetSCC_CAP_REENTRANT(0), 0);
    EXPECT_EQ(CMProperty::isSetSCC_CAP_COMMENTCHECKOUT(0), 0);
    EXPECT_EQ(CMProperty::SCCToolName, "Double");
    EXPECT_EQ(CMProperty::getIsConnected(), 0);
}

TEST_F(Context, OfAProjectThatWasCreatedCountsAsAFailure) {
    associate("Plant");
    provider->answer("SccOpenProject", SCC_I_PROJECTCREATED);
    EXPECT_EQ(get(&pump), 0);
    EXPECT_EQ(host.messages.shown.size(), 1U);
}

TEST_F(Context, AFailureTakesTheLastRecordOffTheListEvenIfItIsAnother) {
    pvContextStruct *const given = CMProperty::addPvStruct();
    pvContextStruct *const last = CMProperty::addPvStruct();
    last->setpvContextName("Mill");
    CString name = "Plant";
    CString aux;
    context = given;
    provider->answer("SccOpenProject", SCC_E_UNKNOWNPROJECT);
    EXPECT_EQ(SCCConnectToCMRepository().connectLazy(&pump, context, name, aux), 0);
    EXPECT_EQ(context, given);
    EXPECT_THAT(CMProperty::getPvContextStructList(), ElementsAre(given));
    EXPECT_EQ(last->getpvContextName(), "Mill") << "it is not freed";
}

TEST_F(Context, AFailureWithARecordOutsideTheListLeavesAnEmptyListEmpty) {
    pvContextStruct outside;
    CString name = "Plant";
    CString aux;
    context = &outside;
    provider->answer("SccOpenProject", SCC_E_UNKNOWNPROJECT);
    EXPECT_EQ(SCCConnectToCMRepository().connectLazy(&pump, context, name, aux), 0);
    EXPECT_EQ(context, &outside);
    EXPECT_THAT(contextNames(), IsEmpty());
    EXPECT_EQ(CMProperty::getPvContextStructList().GetCount(), 0);
}

TEST_F(Context, OfAGivenRecordIsOpenedInIt) {
    pvContextStruct *const given = CMProperty::addPvStruct();
    context = given;
    CString name = "Plant";
    CString aux;
    EXPECT_EQ(SCCConnectToCMRepository().connectLazy(&pump, context, name, aux), 1);
    EXPECT_EQ(context, given);
    EXPECT_THAT(contextNames(), ElementsAre("Plant"));
    EXPECT_EQ(CMProperty::getIsConnected(), 0) << "the callers set it";
}

TEST_F(Context, WithoutAProjectNothingIsOpenedAndNoRecordIsMade) {
    host.model.activeProject = nullptr;
    CString name = "Plant";
    CString aux;
    EXPECT_EQ(SCCConnectToCMRepository().connectLazy(&pump, context, name, aux), 0);
    EXPECT_EQ(context, nullptr);
    EXPECT_THAT(host.calls, IsEmpty());
    EXPECT_EQ(CMProperty::getIsLoaded(), 0);
}

TEST_F(Context, OfALibraryThatCannotBeLoadedHasNoProviderContextAndNoMessage) {
    registerLibrary(unitsDirectory().string());
    associate("Plant");
    EXPECT_EQ(get(&pump), 1);
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(context->getpvContextPtr(), nullptr);
    EXPECT_EQ(CMProperty::getIsLoaded(), 1);
    EXPECT_FALSE(CMProperty::getSCCdll().isHeld());
    EXPECT_NE(CMProperty::getSCCdll().loadError(), "");
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

// --- Faults.

TEST_F(Context, AFaultOfTheProviderIsReportedOnceAndDoesNotEndTheHost) {
    associate("Plant");
    provider->answers["SccOpenProject"] = crash;
    EXPECT_EQ(get(&pump), 1);
    ASSERT_EQ(host.messages.shown.size(), 1U);
    EXPECT_THAT(host.messages.shown[0].text.str(), HasSubstr("SccOpenProject"));
    EXPECT_EQ(host.messages.shown[0].flags, MB_ICONHAND);
    ASSERT_NE(context, nullptr) << "as far as it got";
    EXPECT_EQ(provider->contexts.at(context->getpvContextPtr()), 1);
    EXPECT_EQ(context->getpvContextName(), "");
    EXPECT_EQ(CMProperty::getIsConnected(), 0);
    EXPECT_EQ(host.places.disabledFaults, 0);
    EXPECT_EQ(host.logsOpen, 0) << "everything on the way was closed";
}

TEST_F(Context, AnExceptionOfTheProviderIsSwallowed) {
    associate("Plant");
    provider->answers["SccInitialize"] = []() -> SCCRTN { throw std::runtime_error("thrown"); };
    EXPECT_EQ(get(&pump), 1);
    EXPECT_THAT(host.messages.shown, IsEmpty());
    EXPECT_NE(context, nullptr);
    EXPECT_EQ(host.places.disabledFaults, 0);
}

TEST_F(Context, FaultsAreDisabledWhileTheProviderWorks) {
    associate("Plant");
    int disabled = -1;
    provider->answers["SccOpenProject"] = [this, &disabled] {
        disabled = host.places.disabledFaults;
        return SCC_OK;
    };
    get(&pump);
    EXPECT_EQ(disabled, 1);
}

// --- For the report of an operation.

TEST_F(Context, AddsItsCallsToTheReportOfAnOperation) {
    support::OutcomeRecorder outcomes;
    associate("Plant");
    OutcomeReport report;
    context = provider::contextFor(&pump, report);
    ASSERT_NE(context, nullptr);
    report.send();
    ASSERT_EQ(outcomes.last().runs.size(), 2U);
    EXPECT_EQ(outcomes.last().runs[0].command, "SccInitialize");
    EXPECT_EQ(outcomes.last().runs[1].command, "SccOpenProject");
    EXPECT_EQ(outcomes.last().kind, CMOutcome::Kind::done);
}

TEST_F(Context, ReportsWhyThereIsNone) {
    support::OutcomeRecorder outcomes;
    OutcomeReport none;
    EXPECT_EQ(provider::contextFor(&pump, none), nullptr);
    none.send();
    EXPECT_EQ(outcomes.last().kind, CMOutcome::Kind::noTool);
    EXPECT_EQ(outcomes.last().reason, resources::text(Text::providerNotConnected));

    associate("Plant");
    provider->answer("SccOpenProject", SCC_E_NOTAUTHORIZED);
    OutcomeReport refused;
    context = provider::contextFor(&pump, refused);
    refused.send();
    EXPECT_EQ(outcomes.last().kind, CMOutcome::Kind::failed);
    EXPECT_EQ(outcomes.last().reason, resources::text(Text::resultNotAuthorized));
    EXPECT_EQ(outcomes.last().runs.back().result, SCC_E_NOTAUTHORIZED);

    provider->answers["SccOpenProject"] = crash;
    OutcomeReport crashed;
    context = provider::contextFor(&pump, crashed);
    crashed.send();
    EXPECT_EQ(outcomes.last().kind, CMOutcome::Kind::failed);
    EXPECT_THAT(outcomes.last().reason.str(), HasSubstr("SccOpenProject"));

    provider->answers["SccOpenProject"] = []() -> SCCRTN { throw 7; };
    OutcomeReport threw;
    context = provider::contextFor(&pump, threw);
    threw.send();
    EXPECT_EQ(outcomes.last().reason, resources::text(Text::providerThrew));
}

TEST_F(Context, ReportsALibraryThatCannotBeLoadedForEveryUnit) {
    write(scratch / "text.so", "no library");
    registerLibrary((scratch / "text.so").string());
    associate("Plant");
    support::OutcomeRecorder outcomes;
    for (int unit = 0; unit < 2; ++unit) {
        OutcomeReport report;
        context = provider::contextFor(&pump, report);
        report.send();
        EXPECT_EQ(outcomes.last().kind, CMOutcome::Kind::noTool);
        EXPECT_THAT(outcomes.last().reason.str(), HasSubstr((scratch / "text.so").string()));
        EXPECT_THAT(outcomes.last().reason.str(), HasSubstr("HKEY_LOCAL_MACHINE\\Software\\Double"));
    }
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(Context, ReportsALibraryThatIsNoProvider) {
    registerLibrary(DOUBLE_PROVIDER_WITHOUT_START);
    associate("Plant");
    support::OutcomeRecorder outcomes;
    OutcomeReport report;
    context = provider::contextFor(&pump, report);
    report.send();
    EXPECT_EQ(outcomes.last().kind, CMOutcome::Kind::noTool);
    EXPECT_THAT(outcomes.last().reason.str(), HasSubstr("SccInitialize"));
    EXPECT_THAT(outcomes.last().reason.str(), HasSubstr(DOUBLE_PROVIDER_WITHOUT_START));
}

TEST_F(Context, ReportsThatNoLibraryIsRegistered) {
    registerLibrary("/nowhere/none.so");
    CMProperty::setIsLoaded(1);
    associate("Plant");
    support::OutcomeRecorder outcomes;
    OutcomeReport report;
    context = provider::contextFor(&pump, report);
    report.send();
    EXPECT_EQ(outcomes.last().kind, CMOutcome::Kind::noTool);
    EXPECT_EQ(outcomes.last().reason, resources::text(Text::providerNotFound));
}

} // namespace
