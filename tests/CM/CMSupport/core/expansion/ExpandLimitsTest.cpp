#include "CM/CMSupport/core/CMUnit.h"
#include "tests/CM/CMSupport/core/expansion/ExpansionFixture.h"

using testing::HasSubstr;

namespace {

class ExpandLimits : public ExpansionFixture {
  protected:
    [[nodiscard]] std::string loggedOnce() const {
        return host.logLines.size() == 1 ? host.logLines[0].text.str() : std::to_string(host.logLines.size());
    }
};

TEST_F(ExpandLimits, FailOnAPropertyThatRefersToItselfAndNameIt) {
    setToolProperty("Loop", "a $Loop b");
    EXPECT_EQ(expand("x $Loop"), "x $Loop");
    EXPECT_EQ(status, 0);
    EXPECT_THAT(loggedOnce(), HasSubstr("'Loop'"));
}

TEST_F(ExpandLimits, FailOnPropertiesThatReferToEachOtherInAConditional) {
    setToolProperty("One", "$Two");
    setToolProperty("Two", "($One ? a : $One)");
    EXPECT_EQ(CMProperty::ExpandProperty("One", args, result, error, false), 0)
        << "though a conditional that fails otherwise leaves nothing, and nothing is a success";
    EXPECT_EQ(host.logLines.size(), 1U);
}

TEST_F(ExpandLimits, FailOnAnArgumentWhoseValueNamesIt) {
    give("log", "see $log and $log");
    EXPECT_EQ(expand("ci $log"), "ci $log");
    EXPECT_EQ(status, 0);
    EXPECT_THAT(loggedOnce(), HasSubstr("'log'"));
}

TEST_F(ExpandLimits, LeaveNoSuccessToAPredefinedVariableBehind) {
    setToolProperty("Loop", "$Loop");
    EXPECT_EQ(expand("($Loop ? a : b) $temp"), "($Loop ? a : b) $temp");
    EXPECT_EQ(status, 0);
}

TEST_F(ExpandLimits, FailOnValuesThatDoubleEachOther) {
    for (int level = 0; level < 60; ++level) {
        const auto next = "$P" + std::to_string(level + 1);
        setToolProperty("P" + std::to_string(level), next + next);
    }
    setToolProperty("P60", "x");
    expand("$P0");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(host.logLines.size(), 1U);
}

TEST_F(ExpandLimits, FailOnValuesThatKeepFailingAndBeingTriedAgain) {
    give("a", "$a $P");
    setToolProperty("P", "$a $P");
    expand("$P $a");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(host.logLines.size(), 1U);
}

TEST_F(ExpandLimits, FailOnATextThatEachReplacementMakesLonger) {
    give("B", "B$$");
    std::string source = "$";
    for (int count = 0; count < 40; ++count) {
        source += "B$"; // the dollars after a variable double with each variable before it
    }
    expand(source);
    EXPECT_EQ(status, 0);
    EXPECT_THAT(loggedOnce(), HasSubstr("grows without end"));
}

TEST_F(ExpandLimits, FailOnAPredefinedVariableWhoseValueNamesIt) {
    host.places.tempDir = "/x/$temp";
    expand("cd $temp");
    EXPECT_EQ(status, 0);
    EXPECT_THAT(loggedOnce(), HasSubstr("'temp' was given up: it grows without end"));
}

TEST_F(ExpandLimits, CountWhatArgumentsExpandInTurn) {
    // For each value the unit expands megabytes by itself, and its result is short.
    setToolProperty("Big", "(? " + std::string(8U << 20, 'x') + " : )");
    setToolProperty("Repository", "/archive$Big");
    CMUnit unit(&host.addUnit("Pump"));
    args.AddTail(&unit);
    std::string source;
    for (int count = 0; count < 40; ++count) {
        source += "$UnitArchiveDir ";
    }
    expand("$UnitArchiveDir");
    EXPECT_EQ(status, 1) << "one is well within the limits";
    expand(source);
    EXPECT_EQ(status, 0);
    EXPECT_THAT(loggedOnce(), HasSubstr("grows without end"));
    expand("$UnitArchiveDir");
    EXPECT_EQ(status, 1) << "each expansion starts anew";
}

TEST_F(ExpandLimits, AllowVariablesAmongBracesThatAValueCompletes) {
    give("a", "$");
    EXPECT_EQ(expand("${a}{a}{a}{a}}}{{"), "$}}{{");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandLimits, AllowALongChainOfProperties) {
    for (int level = 0; level < 150; ++level) {
        setToolProperty("P" + std::to_string(level), "$P" + std::to_string(level + 1));
    }
    setToolProperty("P150", "end");
    EXPECT_EQ(expand("$P0"), "end");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandLimits, AllowAPredefinedVariableWherePlainTextIsAllowed) {
    const auto chainTo = [this](const CString &end) {
        for (int level = 1; level < 199; ++level) {
            setToolProperty("P" + std::to_string(level), "$P" + std::to_string(level + 1));
        }
        setToolProperty("P199", end);
        return expand("$P1");
    };
    EXPECT_EQ(chainTo("x"), "x");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(chainTo("$temp"), expand("$temp"));
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandLimits, AllowThousandsOfVariables) {
    give("v", "a longer value than its name");
    std::string source;
    std::string expected;
    for (int count = 0; count < 20000; ++count) {
        source += "$v ";
        expected += "a longer value than its name ";
    }
    EXPECT_EQ(expand(source), expected);
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandLimits, AllowThousandsOfValuesThatHoldADollar) {
    give("v", "5$ each, not a variable");
    std::string source;
    std::string expected;
    for (int count = 0; count < 20000; ++count) {
        source += "$v ";
        expected += "5$ each, not a variable ";
    }
    EXPECT_EQ(expand(source), expected);
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandLimits, AllowACommentOfMegabytes) {
    const std::string comment(4U << 20, 'c');
    give("log", comment);
    EXPECT_EQ(expand("ci -m$log f"), "ci -m" + comment + " f");
    EXPECT_EQ(status, 1);
}

TEST_F(ExpandLimits, StayQuietForAnOrdinaryTemplate) {
    setToolProperty("Inner", "i");
    expand("(a ? $Inner : b) $temp");
    EXPECT_TRUE(host.logLines.empty());
}

} // namespace
