// Tests the entries for the start and the end of a project with a provider.
#include "CM/CMSupport/provider/SCCFacade.h"
#include "tests/CM/CMSupport/provider/ProviderFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ProjectWithProvider : public ProviderFixture {
  protected:
    /// Makes a provider context the current one.
    void makeCurrent() {
        CMProperty::setPvContext(&provider->contextPlaces[5]);
        provider->contexts[&provider->contextPlaces[5]] = 5;
    }
};

TEST_F(ProjectWithProvider, LoadsTheLibraryWhenItIsSetUp) {
    EXPECT_EQ(SCCFacade::doSetUpSCC(), 1);
    EXPECT_TRUE(CMProperty::getSCCdll().isHeld());
    EXPECT_EQ(CMProperty::getIsLoaded(), 1);
    EXPECT_THAT(provider->calls, IsEmpty());
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(ProjectWithProvider, ClosesTheCurrentProjectWhenItIsSetUpAgain) {
    SCCFacade::doSetUpSCC();
    makeCurrent();
    provider->answer("SccCloseProject", SCC_E_PROJNOTOPEN);
    EXPECT_EQ(SCCFacade::doSetUpSCC(), 1);
    EXPECT_THAT(provider->calls, ElementsAre("SccCloseProject context=5"));
}

TEST_F(ProjectWithProvider, IsNotSetUpIfItWorksByCommands) {
    setGeneral("UseSCCtool", "No");
    EXPECT_EQ(SCCFacade::doSetUpSCC(), 1);
    EXPECT_FALSE(CMProperty::getSCCdll().isHeld());
    EXPECT_EQ(CMProperty::getIsLoaded(), 0);
}

TEST_F(ProjectWithProvider, CountsAsLoadedEvenIfTheLibraryCannotBeLoaded) {
    registerLibrary(unitsDirectory().string());
    EXPECT_EQ(SCCFacade::doSetUpSCC(), 1);
    EXPECT_FALSE(CMProperty::getSCCdll().isHeld());
    EXPECT_EQ(CMProperty::getIsLoaded(), 1);
    EXPECT_THAT(host.messages.shown, IsEmpty());
}

TEST_F(ProjectWithProvider, EndsTheCurrentContextWhenItIsCleanedUp) {
    SCCFacade::doSetUpSCC();
    makeCurrent();
    CMProperty::addPvStruct()->setpvContextName("Plant");
    provider->answer("SccUninitialize", SCC_E_NONSPECIFICERROR);
    EXPECT_EQ(SCCFacade::doCleanUpSCC(), 1);
    EXPECT_THAT(provider->calls, ElementsAre("SccUninitialize context=5"));
    EXPECT_THAT(contextNames(), ElementsAre("Plant")) << "the list stays as it is";
    EXPECT_TRUE(CMProperty::getSCCdll().isHeld()) << "the library stays loaded";
    EXPECT_EQ(CMProperty::getIsLoaded(), 1);
}

TEST_F(ProjectWithProvider, IsNotCleanedUpBeforeALibraryWasLoaded) {
    CMProperty::getSCCdll().LoadDll(DOUBLE_PROVIDER);
    EXPECT_EQ(SCCFacade::doCleanUpSCC(), 1);
    EXPECT_THAT(provider->calls, IsEmpty());
}

TEST_F(ProjectWithProvider, ClosesTheCurrentProjectWhetherOrNotItCountsAsLoaded) {
    CMProperty::getSCCdll().LoadDll(DOUBLE_PROVIDER);
    makeCurrent();
    EXPECT_EQ(SCCFacade::doCloseProjectSCC(), 1);
    EXPECT_THAT(provider->calls, ElementsAre("SccCloseProject context=5"));
}

TEST_F(ProjectWithProvider, RunsNoToolOfTheProvider) {
    SCCFacade::doSetUpSCC();
    EXPECT_EQ(SCCFacade::SCCRunToolExe(), 1);
    EXPECT_THAT(provider->calls, IsEmpty());
    EXPECT_THAT(host.worker.commands, IsEmpty());
}

} // namespace
