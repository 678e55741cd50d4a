#include "CM/CMSupport/core/CMLog.h"
#include "tests/CM/CMSupport/core/expansion/ExpansionFixture.h"

namespace {

class Expand : public ExpansionFixture {};

TEST_F(Expand, LeavesTheResultOfAnEmptyTemplateUntouched) {
    EXPECT_EQ(expand(""), "untouched");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, CopiesATextWithoutVariables) {
    EXPECT_EQ(expand("co -l file.txt"), "co -l file.txt");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(error, "no error");
}

TEST_F(Expand, ReplacesAVariableByItsArgument) {
    give("label", "v1");
    EXPECT_EQ(expand("co -r$label x"), "co -rv1 x");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, TreatsBracesLikeNoBracesForArgumentsAndProperties) {
    give("label", "v1");
    setToolProperty("Flags", "-q");
    EXPECT_EQ(expand("${label}x ${Flags}y"), "v1x -qy");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, SwallowsALoneBraceOnEitherSide) {
    give("label", "v1");
    EXPECT_EQ(expand("<$label}>"), "<v1>");
    EXPECT_EQ(expand("<${label>"), "<v1>");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, TakesTheLongestRunOfNameCharacters) {
    give("name", "wrong");
    give("namepart", "right");
    EXPECT_EQ(expand("$namepart/$namepart-x"), "right/right-x");
    EXPECT_EQ(expand("$name_2"), "$name_2") << "another name, which nothing knows";
    EXPECT_EQ(status, 0);
}

TEST_F(Expand, FindsAnArgumentInAnyCase) {
    give("Unit", "Pump.ocl");
    EXPECT_EQ(expand("$UNIT $unit"), "Pump.ocl Pump.ocl");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, PrefersTheFirstArgumentOfAName) {
    AnyArgument &first = give("label", "first");
    AnyArgument &second = give("LABEL", "second");
    EXPECT_EQ(expand("$label"), "first");
    EXPECT_EQ(first.taken, 1);
    EXPECT_EQ(second.taken, 0);
}

TEST_F(Expand, SkipsNullEntriesOfTheArgumentList) {
    args.AddTail(nullptr);
    give("label", "v1");
    args.AddTail(nullptr);
    EXPECT_EQ(expand("$label"), "v1");
    EXPECT_EQ(args.GetCount(), 3);
}

TEST_F(Expand, LetsAnArgumentShadowAProperty) {
    setToolProperty("log", "of the property");
    CMLog log("done");
    args.AddTail(&log);
    EXPECT_EQ(expand("$log"), "done");
}

TEST_F(Expand, LetsAPropertyShadowAPredefinedVariable) {
    EXPECT_EQ(expand("$temp"), "/tmp");
    setToolProperty("temp", "/scratch");
    EXPECT_EQ(expand("$temp"), "/scratch");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, LetsAnArgumentShadowAPredefinedVariable) {
    give("temp", "/given");
    EXPECT_EQ(expand("$temp"), "/given");
}

TEST_F(Expand, ReplacesTwoEqualVariablesOneAfterTheOther) {
    AnyArgument &label = give("label", "v1");
    EXPECT_EQ(expand("$label and $label"), "v1 and v1");
    EXPECT_EQ(label.taken, 2);
}

TEST_F(Expand, ExpandsAnArgumentsValueBeforeItGoesIn) {
    give("outer", "<$inner>");
    give("inner", "text");
    EXPECT_EQ(expand("a $outer b"), "a <text> b");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, ExpandsAPropertysValueBeforeItGoesIn) {
    setToolProperty("Outer", "<$Inner>");
    setToolProperty("Inner", "text");
    EXPECT_EQ(expand("a $Outer b"), "a <text> b");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, PutsNothingInForAnEmptyArgumentOrProperty) {
    give("log", "");
    setToolProperty("Flags", "");
    EXPECT_EQ(expand("ci [$log] [$Flags]"), "ci [] []");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, MayLeaveAnEmptyText) {
    give("log", "");
    EXPECT_EQ(expand("$log"), "");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, FailsOnANameThatNothingKnowsAndLeavesTheRestAsItIs) {
    give("label", "v1");
    EXPECT_EQ(expand("$label $nobody $label"), "v1 $nobody $label");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(error, "no error") << "not written";
}

TEST_F(Expand, FailsOnAValueWithADollarThatIsNoVariable) {
    give("log", "costs $much");
    EXPECT_EQ(expand("ci -m'$log' x"), "ci -m'costs $much' x");
    EXPECT_EQ(status, 0);
}

TEST_F(Expand, LeavesADollarAloneThatNoNameFollows) {
    give("log", "5$ or $5 or $");
    EXPECT_EQ(expand("$log $$ $-"), "5$ or $5 or $ $$ $-");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, ReadsAVariableThatAReplacementHasCompleted) {
    give("a", "b");
    give("b", "found");
    EXPECT_EQ(expand("$$a ${${a} x"), "found found x");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, ReadsAVariableThatTheTextBehindAReplacementCompletes) {
    give("a", "cost$");
    give("b", "found");
    EXPECT_EQ(expand("${a}b $a{b}"), "costfound costfound");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, StopsAtAnUnresolvedVariableOfAValue) {
    AnyArgument &label = give("label", "v1");
    give("log", "costs $much");
    EXPECT_EQ(expand("$log $label"), "costs $much $label");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(label.taken, 0);
}

TEST_F(Expand, TakesABackslashBeforeADollarOrABackslashOutOfAValue) {
    give("log", "a\\\\b"); // two backslashes
    EXPECT_EQ(expand("$log"), "a\\b");
    give("price", "5\\$");
    EXPECT_EQ(expand("$price"), "5$");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, KeepsALoneBackslashInAValue) {
    give("path", "C:\\models\\new");
    EXPECT_EQ(expand("$path"), "C:\\models\\new");
}

TEST_F(Expand, UsesTheProvidersNameOnlyForTheTemplatesOwnVariables) {
    setProviderRoute();
    ::setenv("ORCHARD_REGISTRY", "/nowhere/registry.reg", 1);
    CMProperty::setSCCToolName("Basalt");
    host.setProperty(nullptr, IPN::CM, "Basalt", "Key", "of Basalt");
    host.setProperty(nullptr, IPN::CM, "SCC", "Key", "of all");
    give("arg", "$Key");
    EXPECT_EQ(expand("$Key $arg", true), "of Basalt of all");
    EXPECT_EQ(expand("$Key (x ? $Key)", true), "of Basalt of all");
    EXPECT_EQ(expand("$Key", false), "of all");
    CMProperty::setSCCToolName("");
    ::unsetenv("ORCHARD_REGISTRY");
}

class ExpandByProvider : public ExpansionFixture {
  protected:
    ExpandByProvider() {
        setProviderRoute();
        ::setenv("ORCHARD_REGISTRY", "/nowhere/registry.reg", 1);
        CMProperty::setSCCToolName("Basalt");
        setBoth("Key", "of Basalt", "of all");
    }
    ~ExpandByProvider() override {
        CMProperty::setSCCToolName("");
        ::unsetenv("ORCHARD_REGISTRY");
    }
    void setBoth(const CString &key, const CString &ofBasalt, const CString &ofAll) {
        host.setProperty(nullptr, IPN::CM, "Basalt", key, ofBasalt);
        host.setProperty(nullptr, IPN::CM, "SCC", key, ofAll);
    }
};

TEST_F(ExpandByProvider, UsesTheProvidersNameInTheValueOfAPropertyToo) {
    setBoth("Outer", "<$Key>", "[$Key]");
    EXPECT_EQ(expand("$Outer", true), "<of Basalt>");
    EXPECT_EQ(expand("$Outer", false), "[of all]");
}

TEST_F(ExpandByProvider, UsesTheProvidersNameForAPropertyToExpand) {
    setBoth("Outer", "<$Key>", "[$Key]");
    EXPECT_EQ(CMProperty::ExpandProperty("Outer", args, result, error, true), 1);
    EXPECT_EQ(result, "<of Basalt>");
    EXPECT_EQ(CMProperty::ExpandProperty("Outer", args, result, error, false), 1);
    EXPECT_EQ(result, "[of all]");
}

TEST_F(ExpandByProvider, UsesTheProvidersNameForAValueOfTheProject) {
    CString value;
    EXPECT_EQ(CMProperty::getToolPropertyValue("Key", value, true), 1);
    EXPECT_EQ(value, "of Basalt");
    EXPECT_EQ(CMProperty::getToolPropertyValue("Key", value, false), 1);
    EXPECT_EQ(value, "of all");
}

TEST_F(ExpandByProvider, DoesNotUseTheProvidersNameInAnyPartOfAConditional) {
    setBoth("OnlyBasalt", "set", "");
    EXPECT_EQ(expand("($OnlyBasalt ? a : b $Key)", true), "b of all") << "the condition and the else part";
    EXPECT_EQ(expand("(x ? $Key)", true), "of all") << "the then part";
}

TEST_F(Expand, RecoversFromAFailureByAPredefinedVariable) {
    // The conditional fails and vanishes; the predefined variable after it sets the status to success again.
    EXPECT_EQ(expand("($nobody ? a : b)x$temp"), "x/tmp");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(expand("($nobody ? a : b)x"), "x");
    EXPECT_EQ(status, 0);
}

TEST_F(Expand, FailsWithoutTheInstallationRootOnAPredefinedVariable) {
    host.places.root = "";
    EXPECT_EQ(expand("$temp"), "$temp");
    EXPECT_EQ(status, 0);
}

TEST_F(Expand, TakesAPredefinedVariableThatANameBeginsWith) {
    EXPECT_EQ(expand("$tempest"), "/tmpest") << "the pattern is not tied to the end of the name";
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, FailsOnAPredefinedVariableInBraces) {
    EXPECT_EQ(expand("${temp}/x"), "${temp}/x");
    EXPECT_EQ(status, 0);
}

TEST_F(Expand, FallsBackToThePredefinedVariableIfThePropertyOfItsNameFails) {
    setToolProperty("temp", "$nobody");
    EXPECT_EQ(expand("$temp"), "/tmp");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, NamesTheOuterPropertyIfTheInnerOneFails) {
    setToolProperty("Outer", "x $nobody");
    EXPECT_EQ(expand("a $Outer b"), "a $Outer b");
    EXPECT_EQ(status, 0);
}

TEST_F(Expand, CarriesTextOfAnyBytes) {
    const std::string bytes = "M\xfcller \xff\xfe\x01";
    give("user", bytes);
    EXPECT_EQ(expand("\xe9 $user\xe9"), "\xe9 " + bytes + "\xe9");
    EXPECT_EQ(status, 1);
}

TEST_F(Expand, LeavesTheArgumentListAsItWas) {
    give("label", "v1");
    expand("$label $nobody (a ? b)");
    EXPECT_EQ(args.GetCount(), 1);
}

class ExpandProperty : public ExpansionFixture {};

TEST_F(ExpandProperty, ExpandsTheValueOfTheToolsProperty) {
    setToolProperty(IPN::CMCheckOut, "co $mode $UnitPath");
    give("mode", "-l");
    give("unitpath", "/m/Pump.ocl");
    EXPECT_EQ(CMProperty::ExpandProperty(IPN::CMCheckOut, args, result, error, false), 1);
    EXPECT_EQ(result, "co -l /m/Pump.ocl");
}

TEST_F(ExpandProperty, FailsWithoutTheProperty) {
    EXPECT_EQ(CMProperty::ExpandProperty("Unknown", args, result, error, false), 0);
    EXPECT_EQ(result, "untouched");
}

TEST_F(ExpandProperty, LeavesTheResultForAnEmptyValueAndSucceeds) {
    setToolProperty("Empty", "");
    EXPECT_EQ(CMProperty::ExpandProperty("Empty", args, result, error, false), 1);
    EXPECT_EQ(result, "untouched");
}

TEST_F(ExpandProperty, ShowsTheHalfExpandedTextOnFailure) {
    setToolProperty("Command", "co $label $nobody");
    give("label", "v1");
    EXPECT_EQ(CMProperty::ExpandProperty("Command", args, result, error, false), 0);
    EXPECT_EQ(result, "co v1 $nobody");
}

} // namespace
