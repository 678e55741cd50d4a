#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

using testing::ElementsAre;
using testing::EndsWith;

namespace {

class LookUp : public CoreFixture {
  protected:
    static std::string value(const IProperty *property) {
        return property != nullptr ? property->getValue().str() : "(none)";
    }
    static std::string tool(const CString &key, IDObject *object = nullptr, int where = 0,
                            bool useToolName = false) {
        return value(CMProperty::getToolProperty(key, object, where, useToolName));
    }
    IProperty *own(IDObject &object, const CString &metaclass, const CString &key) {
        return object.findProperty(IPN::CM, metaclass, key, IProperty::local);
    }
};

TEST_F(LookUp, TakesAnObjectAsItsOwnReferee) {
    auto &unit = host.addClass("Pump");
    EXPECT_EQ(CMProperty::getReferee(&unit), &unit);
}

TEST_F(LookUp, TakesTheConfigurationAsTheDefaultReferee) {
    EXPECT_EQ(CMProperty::getReferee(nullptr), project().configuration);
}

TEST_F(LookUp, TakesAComponentThatIsAStubAsTheDefaultReferee) {
    auto &component = dynamic_cast<recording::Component &>(*project().component);
    component.stub = true;
    EXPECT_EQ(CMProperty::getReferee(nullptr), &component);
}

TEST_F(LookUp, HasNoRefereeWithoutAProjectOrAComponent) {
    traceOn();
    project().component = nullptr;
    EXPECT_EQ(CMProperty::getReferee(nullptr), nullptr);
    host.model.activeProject = nullptr;
    EXPECT_EQ(CMProperty::getReferee(nullptr), nullptr);
    EXPECT_EQ(shown.str(), "");
    EXPECT_EQ(tool("Key"), "(none)");
}

TEST_F(LookUp, TracesAMissingConfiguration) {
    traceOn();
    project().configuration = nullptr;
    EXPECT_EQ(CMProperty::getReferee(nullptr), nullptr);
    EXPECT_EQ(shown.str(), "+++ cannot get valid referee\n");
}

TEST_F(LookUp, ReadsTheNameOfTheTool) {
    EXPECT_EQ(value(CMProperty::getCMTool(nullptr, 0)), "RCS");
    auto &unit = host.addClass("Pump");
    host.setProperty(unit, IPN::CM, IPN::CMGeneral, IPN::CMTool, "Basalt");
    EXPECT_EQ(value(CMProperty::getCMTool(&unit, 0)), "Basalt");
    EXPECT_EQ(value(CMProperty::getCMTool(&unit, 1)), "Basalt");
}

TEST_F(LookUp, TracesAMissingTool) {
    traceOn();
    EXPECT_EQ(CMProperty::getCMTool(&host.addClass("Pump"), IProperty::local), nullptr)
        << "an inherited one doesn't count";
    EXPECT_EQ(shown.str(), "+++ could not find the property that states which is the CM tool\n");
}

TEST_F(LookUp, WritesTheTraceOnlyForTrueInCapitals) {
    for (const char *other : {"true", "True", "YES", "1", ""}) {
        host.setSetting("DEBUG_CM", other);
        CMProperty::getToolProperty("Unknown", nullptr, 0, false);
    }
    EXPECT_EQ(shown.str(), "");
}

TEST_F(LookUp, WritesTheTraceToStandardOutputWithoutAStream) {
    traceOn();
    getMainCMOutputer()() = nullptr;
    testing::internal::CaptureStdout();
    CMProperty::getToolProperty("Unknown", nullptr, 0, false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "+++ could not find the property 'Unknown' for RCS\n");
}

TEST_F(LookUp, PrefersThePropertyOfTheToolToTheGeneralOne) {
    host.setProperty(nullptr, IPN::CM, IPN::CMGeneral, "Key", "general");
    EXPECT_EQ(tool("Key"), "general");
    setToolProperty("Key", "of the tool");
    EXPECT_EQ(tool("Key"), "of the tool");
    host.setTool("Basalt");
    EXPECT_EQ(tool("Key"), "general");
}

TEST_F(LookUp, LetsAnEmptyValueOfTheToolHideTheGeneralOne) {
    host.setProperty(nullptr, IPN::CM, IPN::CMGeneral, "Key", "general");
    setToolProperty("Key", "");
    EXPECT_EQ(tool("Key"), "");
    CString text = "before";
    EXPECT_EQ(CMProperty::getToolPropertyValue("Key", text, false), 1);
    EXPECT_EQ(text, "");
}

TEST_F(LookUp, FindsAGeneralValueAlsoWhenItIsToBeLocal) {
    host.setProperty(nullptr, IPN::CM, IPN::CMGeneral, "Key", "general");
    EXPECT_EQ(tool("Key", &host.addClass("Pump"), IProperty::local), "general");
}

TEST_F(LookUp, DoesNotFindAnInheritedValueOfTheToolWhenItIsToBeLocal) {
    setToolProperty("Key", "of the tool");
    auto &unit = host.addClass("Pump");
    EXPECT_EQ(tool("Key", &unit, IProperty::local), "(none)");
    EXPECT_EQ(tool("Key", &unit, IProperty::inherited), "of the tool");
    host.setProperty(unit, IPN::CM, IPN::CMGeneral, IPN::CMTool, "RCS");
    host.setProperty(unit, IPN::CM, "RCS", "Key", "own");
    EXPECT_EQ(tool("Key", &unit, IProperty::local), "own");
}

TEST_F(LookUp, AsksTheGeneralMetaclassIfThereIsNoTool) {
    traceOn();
    auto &unit = host.addClass("Pump");
    EXPECT_EQ(tool("Key", &unit, IProperty::local), "(none)");
    EXPECT_THAT(shown.str(), EndsWith("+++ could not find the property 'Key' for \n"));
}

TEST_F(LookUp, TracesAKeyThatNothingHolds) {
    traceOn();
    EXPECT_EQ(tool("Key"), "(none)");
    EXPECT_EQ(shown.str(), "+++ could not find the property 'Key' for RCS\n");
}

TEST_F(LookUp, AsksForTheProviderOnItsRoute) {
    setProviderRoute();
    setToolProperty("Key", "of the tool");
    host.setProperty(nullptr, IPN::CM, "SCC", "Key", "of all providers");
    host.setProperty(nullptr, IPN::CM, "Basalt", "Key", "of Basalt");
    CMProperty::setSCCToolName("Basalt");
    EXPECT_EQ(tool("Key", nullptr, 0, false), "of all providers");
    EXPECT_EQ(tool("Key", nullptr, 0, true), "of Basalt");
    CMProperty::setSCCToolName("");
}

TEST_F(LookUp, IgnoresTheProvidersNameOnTheCommandRoute) {
    setToolProperty("Key", "of the tool");
    CMProperty::setSCCToolName("Basalt");
    host.setProperty(nullptr, IPN::CM, "Basalt", "Key", "of Basalt");
    EXPECT_EQ(tool("Key", nullptr, 0, true), "of the tool");
    CMProperty::setSCCToolName("");
}

TEST_F(LookUp, GivesTheHostTheFixedArguments) {
    setToolProperty("Key", "x");
    host.clearRecords();
    tool("Key");
    ASSERT_FALSE(host.lookups.empty());
    for (const auto &lookup : host.lookups) {
        EXPECT_THAT(lookup.rest, ElementsAre(1, 0, 0, 1, 0, 0));
    }
}

TEST_F(LookUp, LeavesAValueAloneThatItCannotFind) {
    CString text = "before";
    EXPECT_EQ(CMProperty::getToolPropertyValue("Key", text, false), 0);
    EXPECT_EQ(text, "before");
}

TEST_F(LookUp, ReadsAValueFromTheActiveProjectAndNotItsConfiguration) {
    setToolProperty("Key", "inherited");
    host.setProperty(project().configuration, IPN::CM, "RCS", "Key", "of the configuration");
    CString text;
    EXPECT_EQ(CMProperty::getToolPropertyValue("Key", text, false), 1);
    EXPECT_EQ(text, "inherited");
}

TEST_F(LookUp, SetsTheToolOfAnObjectThatHasOne) {
    auto &unit = host.addClass("Pump");
    host.setProperty(unit, IPN::CM, IPN::CMGeneral, IPN::CMTool, "RCS");
    EXPECT_EQ(CMProperty::setCMTool("Basalt", &unit), 1);
    EXPECT_EQ(value(CMProperty::getCMTool(&unit, 1)), "Basalt");
    EXPECT_EQ(value(CMProperty::getCMTool(nullptr, 0)), "RCS");
}

TEST_F(LookUp, GivesAnObjectItsOwnToolFromTheInheritedOne) {
    auto &unit = host.addClass("Pump");
    EXPECT_EQ(CMProperty::setCMTool("Basalt", &unit), 1);
    EXPECT_EQ(value(own(unit, IPN::CMGeneral, IPN::CMTool)), "Basalt");
    EXPECT_EQ(value(CMProperty::getCMTool(nullptr, 0)), "RCS") << "the inherited one stays";
}

TEST_F(LookUp, ReportsSuccessAlsoIfThereIsNothingToSetAToolOn) {
    traceOn();
    project().component = nullptr;
    EXPECT_EQ(CMProperty::setCMTool("Basalt", nullptr), 1);
    EXPECT_EQ(shown.str(), "+++ could not find the property that states which is the CM tool\n"
                           "+++ could not find the property that states which is the CM tool\n")
        << "one's own, and an inherited one";
}

TEST_F(LookUp, GivesAnObjectItsOwnPropertyFromTheToolsOne) {
    setToolProperty("Key", "inherited");
    auto &unit = host.addClass("Pump");
    EXPECT_EQ(CMProperty::setToolProperty("Key", "own", &unit), 1);
    EXPECT_EQ(value(own(unit, "RCS", "Key")), "own");
    EXPECT_EQ(tool("Key"), "inherited");
}

TEST_F(LookUp, ChangesAPropertyThatTheObjectHas) {
    auto &unit = host.addClass("Pump");
    host.setProperty(unit, IPN::CM, IPN::CMGeneral, IPN::CMTool, "RCS");
    host.setProperty(unit, IPN::CM, "RCS", "Key", "before");
    EXPECT_EQ(CMProperty::setToolProperty("Key", "after", &unit), 1);
    EXPECT_EQ(value(own(unit, "RCS", "Key")), "after");
}

TEST_F(LookUp, ChangesAGeneralPropertyInPlaceThoughItIsInherited) {
    host.setProperty(nullptr, IPN::CM, IPN::CMGeneral, "Key", "before");
    auto &unit = host.addClass("Pump");
    EXPECT_EQ(CMProperty::setToolProperty("Key", "after", &unit), 1);
    EXPECT_EQ(tool("Key"), "after");
    EXPECT_EQ(own(unit, "RCS", "Key"), nullptr);
}

TEST_F(LookUp, RefusesToSetAKeyThatNothingKnowsAndMakesNothing) {
    auto &unit = host.addClass("Pump");
    EXPECT_EQ(CMProperty::setToolProperty("Unknown", "x", &unit), 0);
    EXPECT_TRUE(unit.properties.empty());
    EXPECT_EQ(CMProperty::setToolPropertyValue("Unknown", "x"), 0);
    EXPECT_TRUE(project().properties.empty());
}

TEST_F(LookUp, SetsAValueOnTheActiveProject) {
    setToolProperty("Key", "inherited");
    EXPECT_EQ(CMProperty::setToolPropertyValue("Key", "own"), 1);
    EXPECT_EQ(value(own(project(), "RCS", "Key")), "own");
}

TEST_F(LookUp, StoresUnderTheToolsNameAlsoOnTheProviderRoute) {
    setProviderRoute();
    host.setProperty(nullptr, IPN::CM, "SCC", "Key", "of all providers");
    EXPECT_EQ(CMProperty::setToolPropertyValue("Key", "own"), 1);
    EXPECT_EQ(value(own(project(), "RCS", "Key")), "own");
}

/// On the provider route, with a property without a tool name.
class LookUpWithoutATool : public testing::Test {
  protected:
    LookUpWithoutATool() {
        CMProperty::ResetIfActiveProjectChanged();
        host.addProject();
        host.addConfiguration("Release", host.addComponent("Main"));
        host.setProperty(nullptr, IPN::CM, IPN::General, "UseSCCtool", "Yes");
        host.setProperty(nullptr, IPN::CM, "SCC", "Key", "of all providers");
    }
    RecordingHost host;
};

TEST_F(LookUpWithoutATool, ReportsSuccessThoughThereIsNoToolToCopy) {
    auto &unit = host.addClass("Pump");
    EXPECT_EQ(CMProperty::setCMTool("Basalt", &unit), 1);
    EXPECT_TRUE(unit.properties.empty());
}

TEST_F(LookUpWithoutATool, ReportsSuccessForAKnownKeyThoughThereIsNoToolToStoreItFor) {
    auto &unit = host.addClass("Pump");
    EXPECT_EQ(CMProperty::setToolProperty("Key", "own", &unit), 1);
    EXPECT_TRUE(unit.properties.empty());
    const IProperty *property = CMProperty::getToolProperty("Key", &unit, IProperty::inherited, false);
    ASSERT_NE(property, nullptr);
    EXPECT_EQ(property->getValue(), "of all providers");
}

} // namespace
