#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

namespace {

class Route : public CoreFixture {
  protected:
    Route() { ::setenv("ORCHARD_REGISTRY", (scratch / "registry.reg").c_str(), 1); }
    ~Route() override { ::unsetenv("ORCHARD_REGISTRY"); }

    // A registry that names a provider whose file exists.
    void registerProvider() {
        write(scratch / "basalt.so", "");
        write(scratch / "registry.reg", "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\Software\\SourceCodeControlProvider]\n"
                                        "\"ProviderRegKey\"=\"Software\\\\Basalt\"\n\n"
                                        "[HKEY_LOCAL_MACHINE\\Software\\Basalt]\n\"SccServerPath\"=\"" +
                                            providerPath() + "\"\n");
    }
    [[nodiscard]] std::string providerPath() const { return (scratch / "basalt.so").string(); }
    [[nodiscard]] std::size_t messages() const { return host.messages.shown.size(); }
    void setRoute(const char *value) { setGeneral("UseSCCtool", value); }
};

TEST_F(Route, IsTheProviderForYesInAnyCase) {
    registerProvider();
    for (const char *yes : {"yes", "YES", "Yes"}) {
        setRoute(yes);
        EXPECT_EQ(CMProperty::useSccCompliantTool(), 1) << yes;
        EXPECT_EQ(CMProperty::getUseSCCtool(), 1) << yes;
    }
}

TEST_F(Route, IsTheCommandForAnyOtherValue) {
    for (const char *no : {"Y", "No", "", "True", "1"}) {
        setRoute("Yes");
        CMProperty::useSccCompliantTool();
        setRoute(no);
        EXPECT_EQ(CMProperty::useSccCompliantTool(), 0) << no;
        EXPECT_EQ(CMProperty::getUseSCCtool(), 0) << no;
    }
}

TEST_F(Route, FindsTheProviderInTheRegistryOnceForAProject) {
    registerProvider();
    setProviderRoute();
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 1);
    EXPECT_EQ(CMProperty::getDLLokay(), 1);
    EXPECT_STREQ(CMProperty::getSCCProviderDLL(), providerPath().c_str());
    EXPECT_EQ(messages(), 0U);
    std::filesystem::remove(scratch / "registry.reg");
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 1);
    EXPECT_EQ(CMProperty::getDLLokay(), 1) << "not looked up again";
}

TEST_F(Route, TellsAboutAMissingProviderOnceForTheProjectAndStaysTheProviderRoute) {
    setProviderRoute();
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 1);
    ASSERT_EQ(messages(), 1U);
    EXPECT_EQ(host.messages.shown[0].text, resources::text(resources::Text::providerNotFound));
    EXPECT_EQ(host.messages.shown[0].flags, MB_ICONHAND);
    EXPECT_EQ(host.messages.shown[0].level, 2);
    EXPECT_EQ(CMProperty::getDLLokay(), 0);
    for (int call = 0; call < 3; ++call) {
        EXPECT_EQ(CMProperty::useSccCompliantTool(), 1);
        EXPECT_EQ(CMProperty::getUseSCCtool(), 1);
    }
    EXPECT_EQ(messages(), 1U);
    EXPECT_EQ(CMProperty::getDLLokay(), 0);
}

TEST_F(Route, LooksAgainForAnotherProjectEvenWithTheSameProvider) {
    setProviderRoute();
    CMProperty::useSccCompliantTool();
    host.model.activeProject = &host.addProject("Mill", scratch.string());
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 1);
    EXPECT_EQ(messages(), 2U);
    host.model.activeProject = &project();
    EXPECT_EQ(CMProperty::getUseSCCtool(), 1);
    EXPECT_EQ(messages(), 3U);
}

TEST_F(Route, KeepsThePathOfAnEarlierProviderValid) {
    registerProvider();
    setProviderRoute();
    CMProperty::useSccCompliantTool();
    const char *path = CMProperty::getSCCProviderDLL();
    host.model.activeProject = &host.addProject("Mill", scratch.string());
    CMProperty::useSccCompliantTool();
    EXPECT_STREQ(path, providerPath().c_str());
}

TEST_F(Route, IsTheCommandWhileAProjectIsLoadedForAMergeThoughTheFlagSaysProvider) {
    setProviderRoute();
    project().loadedForMerge = true;
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 0);
    EXPECT_EQ(CMProperty::getUseSCCtool(), 1);
    EXPECT_EQ(messages(), 0U) << "the registry is not looked at";
}

TEST_F(Route, WithoutAProjectAnswersNoWhileTheLastDecisionStands) {
    registerProvider();
    setProviderRoute();
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 1);
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 0);
    EXPECT_EQ(CMProperty::getUseSCCtool(), 1);
    std::filesystem::remove(scratch / "registry.reg");
    host.model.activeProject = &project();
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 1);
    EXPECT_EQ(messages(), 1U) << "what was looked up is forgotten";
}

TEST(RouteWithoutItsProperty, AnswersNoAndLeavesTheLastDecision) {
    RecordingHost host;
    CMProperty::ResetIfActiveProjectChanged();
    auto &project = host.addProject();
    ::setenv("ORCHARD_REGISTRY", "/nowhere/registry.reg", 1);
    host.setProperty(project, IPN::CM, IPN::General, "UseSCCtool", "Yes");
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 1);
    project.properties.clear();
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 0);
    EXPECT_EQ(CMProperty::getUseSCCtool(), 1);
    ::unsetenv("ORCHARD_REGISTRY");
}

TEST_F(Route, DoesNotForgetTheLookUpWhenTheProjectTurnsToTheCommandRouteAndBack) {
    setProviderRoute();
    CMProperty::useSccCompliantTool();
    setRoute("No");
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 0);
    setRoute("Yes");
    EXPECT_EQ(CMProperty::useSccCompliantTool(), 1);
    EXPECT_EQ(messages(), 1U);
}

TEST_F(Route, AnswersTheLastDecisionOnceLookedUpUntilItIsAskedAnew) {
    setProviderRoute();
    CMProperty::useSccCompliantTool();
    setRoute("No");
    EXPECT_EQ(CMProperty::getUseSCCtool(), 1) << "the property is not read again";
    CMProperty::useSccCompliantTool();
    EXPECT_EQ(CMProperty::getUseSCCtool(), 0);
}

TEST_F(Route, IsHybridOnlyIfTheProjectSaysSo) {
    EXPECT_FALSE(CMProperty::isHybridModePossible());
    setGeneral("UseHybridModeWhenPossible", "False");
    EXPECT_FALSE(CMProperty::isHybridModePossible());
    setGeneral("UseHybridModeWhenPossible", "True");
    EXPECT_TRUE(CMProperty::isHybridModePossible());
    host.model.activeProject = nullptr;
    EXPECT_FALSE(CMProperty::isHybridModePossible());
}

} // namespace
