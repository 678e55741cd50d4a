#include "tests/CM/CMSupport/core/expansion/ExpansionFixture.h"

namespace {

class ExpandTrace : public ExpansionFixture {
  protected:
    ExpandTrace() { traceOn(); }
    std::string trace(const CString &source) {
        shown.str("");
        expand(source);
        return shown.str();
    }
};

TEST_F(ExpandTrace, TellsOfAnEmptyTemplate) { EXPECT_EQ(trace(""), "+++ Expanding ''\n+++ nothing the expand\n"); }

TEST_F(ExpandTrace, TellsOfAnArgument) {
    give("label", "v1");
    EXPECT_EQ(trace("r$label"), "+++ Expanding 'r$label'\n"
                                "+++ Expanding 'v1'\n");
}

TEST_F(ExpandTrace, TellsOfAProperty) {
    setToolProperty("Flags", "-q");
    EXPECT_EQ(trace("$Flags"), "+++ Expanding '$Flags'\n"
                               "+++ Expanding property 'Flags'\n"
                               "+++ Expanding '-q'\n"
                               "+++ 'Flags' expanded to '-q'\n");
}

TEST_F(ExpandTrace, TellsOfAConditional) {
    EXPECT_EQ(trace("x(a ? b)y"), "+++ Expanding 'x(a ? b)y'\n"
                                  "+++ if: 'a' Then: 'b' Else: ''\n"
                                  "+++ Expanding 'a'\n"
                                  "+++ Expanding 'b'\n"
                                  "+++ after condition expansion: 'xby'\n");
}

TEST_F(ExpandTrace, TellsOfAConditionalThatLeavesNothing) {
    EXPECT_EQ(trace("( ? b)"), "+++ Expanding '( ? b)'\n"
                               "+++ if: '' Then: 'b' Else: ''\n"
                               "+++ Expanding ''\n+++ nothing the expand\n"
                               "+++ Expanding ''\n+++ nothing the expand\n"
                               "+++ after condition expansion: ''\n"
                               "+++ nothing the more expand\n");
}

TEST_F(ExpandTrace, TellsOfAConditionalWhoseConditionFails) {
    EXPECT_EQ(trace("x($nobody ? b : c)"), "+++ Expanding 'x($nobody ? b : c)'\n"
                                           "+++ if: '$nobody' Then: 'b' Else: 'c'\n"
                                           "+++ Expanding '$nobody'\n"
                                           "+++ Expanding property 'nobody'\n"
                                           "+++ could not find the property 'nobody' for RCS\n"
                                           "+++ Expanding (predefined?) '\\$nobody'\n"
                                           "+++ Could not resolve '$nobody'\n"
                                           "+++ after condition expansion: 'x'\n");
}

TEST_F(ExpandTrace, TellsOfAPropertyWhoseValueFails) {
    setToolProperty("Flags", "-q $nobody");
    EXPECT_EQ(trace("$Flags"), "+++ Expanding '$Flags'\n"
                               "+++ Expanding property 'Flags'\n"
                               "+++ Expanding '-q $nobody'\n"
                               "+++ Expanding property 'nobody'\n"
                               "+++ could not find the property 'nobody' for RCS\n"
                               "+++ Expanding (predefined?) '\\$nobody'\n"
                               "+++ Could not resolve '$nobody'\n"
                               "+++ 'Flags' expanded to '-q $nobody'\n"
                               "+++ Expanding (predefined?) '\\$Flags'\n"
                               "+++ Could not resolve '$Flags'\n");
}

TEST_F(ExpandTrace, TellsOfAConditionalWithoutItsEnd) {
    EXPECT_EQ(trace("(a ? b"), "+++ Expanding '(a ? b'\n"
                               "+++ could not find the condition end after the then part\n");
}

TEST_F(ExpandTrace, TellsWhatCouldNotBeResolved) {
    EXPECT_EQ(trace("a ${nobody}"), "+++ Expanding 'a ${nobody}'\n"
                                    "+++ Expanding property 'nobody'\n"
                                    "+++ could not find the property 'nobody' for RCS\n"
                                    "+++ Expanding (predefined?) '\\${nobody}'\n"
                                    "+++ Could not resolve '${nobody}'\n");
}

TEST_F(ExpandTrace, AsksForItsSettingOfSectionGeneral) {
    host.clearRecords();
    expand("x");
    ASSERT_FALSE(host.places.settingsRead.empty());
    EXPECT_EQ(host.places.settingsRead[0], (std::pair<CString, CString>("General", "DEBUG_CM")));
}

TEST_F(ExpandTrace, CanBeSwitchedWhileTheProgramRuns) {
    host.setSetting("DEBUG_CM", "FALSE");
    EXPECT_EQ(trace("x"), "");
    host.setSetting("DEBUG_CM", "TRUE");
    EXPECT_EQ(trace("x"), "+++ Expanding 'x'\n");
}

} // namespace
