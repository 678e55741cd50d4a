// Tests the refresh of states through the library of a provider.
#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMTraitFacade.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/provider/ProviderFixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class RefreshThroughProvider : public ProviderFixture {
  protected:
    RefreshThroughProvider() {
        project().showStatus = true;
        host.setToolDefault("SCC", "RefreshCMStatusAtProjectOpenup", "Yes");
        host.model.repositoryFiles.RemoveAll(); // the objects of the fixture's own units
        associate("Plant");
    }
    recording::Class &unit(const char *name, long state) {
        recording::Class &added = host.addUnit(name);
        provider->states[added.getFullFileName().str()] = state;
        return added;
    }
};

TEST_F(RefreshThroughProvider, OpensTheProjectOnceAndAsksForAllUnitsInOneCall) {
    const auto &pump = unit("Pump", 1);
    const auto &valve = unit("Valve", 3);
    theCMFacade.RefreshCMStatus();
    EXPECT_THAT(entries(), ElementsAre("SccInitialize", "SccOpenProject", "SccQueryInfo"));
    EXPECT_EQ(provider->calls.back(), "SccQueryInfo context=1 files=" + pump.getFullFileName().str() + "," +
                                          valve.getFullFileName().str());
    EXPECT_EQ(pump.cmState, 1);
    EXPECT_EQ(valve.cmState, 3);
}

TEST_F(RefreshThroughProvider, AsksWithTheContextOfTheLastUnit) {
    unit("Pump", 1);
    unit("Valve", 3).setSccArchive("Mill", "");
    theCMFacade.RefreshCMStatus();
    EXPECT_THAT(provider->calls.back(), HasSubstr("context=2"));
    EXPECT_THAT(contextNames(), ElementsAre("Plant", "Mill"));
}

TEST_F(RefreshThroughProvider, StopsAtAUnitThatIsNotConnectedAndAsksForThoseBefore) {
    setProviderProperty("ProjName", "");
    auto &pump = unit("Pump", 1);
    pump.setSccArchive("Mill", "");
    const auto &valve = unit("Valve", 3);
    unit("Tank", 3).setSccArchive("Mill", "");
    theCMFacade.RefreshCMStatus();
    EXPECT_EQ(provider->calls.back(), "SccQueryInfo context=1 files=" + pump.getFullFileName().str());
    EXPECT_EQ(valve.cmState, 0);
    EXPECT_EQ(host.messages.shown.size(), 1U);
}

TEST_F(RefreshThroughProvider, OfAProviderThatDoesNotOpenStillAsksWithItsContext) {
    unit("Pump", 1);
    provider->answer("SccOpenProject", SCC_E_UNKNOWNPROJECT);
    theCMFacade.RefreshCMStatus();
    EXPECT_THAT(entries(), ElementsAre("SccInitialize", "SccOpenProject", "SccQueryInfo")) << "required";
}

TEST_F(RefreshThroughProvider, ACrashDuringTheQueryLeavesTheCall) {
    auto &pump = unit("Pump", 1);
    pump.cmState = 9;
    provider->answers["SccQueryInfo"] = crash;
    EXPECT_THROW(theCMFacade.RefreshCMStatus(), std::runtime_error);
    EXPECT_EQ(pump.cmState, 9);
}

class ConnectThroughFacade : public RefreshThroughProvider {};

TEST_F(ConnectThroughFacade, ACrashOfTheProviderClosesTheTransaction) {
    provider->answers["SccInitialize"] = crash;
    CMUnitList units;
    CMArgumentList args;
    CMDiagnosticList diags;
    EXPECT_THROW(CMFacade::ConnectToArchive(units, args, diags), std::runtime_error);
    EXPECT_EQ(host.undo.depth, 0);
    EXPECT_EQ(CMProperty::getIsConnected(), 0);
}

TEST_F(ConnectThroughFacade, SetUpLoadsAndCloseEndsTheCurrentContext) {
    EXPECT_EQ(CMFacade::doCloseProjectSCC(), 1);
    EXPECT_EQ(CMFacade::doSetUpSCC(), 1);
    EXPECT_THAT(provider->calls, IsEmpty());
    EXPECT_EQ(CMFacade::doCloseProjectSCC(), 1);
    EXPECT_THAT(entries(), ElementsAre("SccUninitialize"));
    EXPECT_EQ(CMFacade::doCleanUpSCC(), 1);
    EXPECT_EQ(CMFacade::RunToolExe(), 1);
    EXPECT_THAT(entries(), ElementsAre("SccUninitialize", "SccUninitialize"));
}

} // namespace
