#include "CM/CMSupport/core/VariableScan.h"

#include "CM/host/SPString.h"
#include "CM/platform/CString.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

namespace {

using Values = std::map<std::string, std::string>;

// Returns what the scan has to agree with: searches the complete text from its start for each variable.
std::string searchedFromTheFront(const std::string &source, const Values &values, int steps) {
    SPString subject(source);
    SPStringList matches(20);
    while (steps-- > 0 && subject.m(R"(\${?([a-zA-Z_][a-zA-Z0-9_]*)}?)", matches, "i") != 0) {
        const auto value = values.find(matches[1].str());
        if (value == values.end()) {
            break;
        }
        std::string text = subject.str();
        text.replace(text.find(matches[0].str()), matches[0].str().size(), value->second);
        subject = text;
    }
    return subject.str();
}

std::string scanned(const std::string &source, const Values &values, int steps) {
    VariableScan scan(source);
    while (steps-- > 0) {
        const auto variable = scan.find();
        const auto value = variable ? values.find(variable->name.str()) : values.end();
        if (value == values.end()) {
            break;
        }
        scan.replace(value->second);
    }
    return scan.take();
}

TEST(VariableScan, GivesTheWholeVariableAndItsName) {
    VariableScan scan("a $$ ${unit}x");
    const auto variable = scan.find();
    ASSERT_TRUE(variable);
    EXPECT_EQ(variable->text, "${unit}");
    EXPECT_EQ(variable->name, "unit");
}

TEST(VariableScan, LeavesATextWithoutAVariableAsItIs) {
    VariableScan scan("a $$ $1 ${ $");
    EXPECT_FALSE(scan.find());
    EXPECT_EQ(scan.take(), "a $$ $1 ${ $");
}

TEST(VariableScan, AgreesWithASearchFromTheFrontOnAnyText) {
    const Values values = {{"a", ""},   {"b", "$"},       {"ab", "${"},     {"ba", "a}"},
                           {"A", "b$"}, {"aa", "long b"}, {"bb", "$a $ b"}, {"abc", "{a"}};
    std::mt19937 random(1);
    const std::string alphabet = "$$$$ab{}A \xff";
    for (int round = 0; round < 20000; ++round) {
        std::string source;
        for (auto length = random() % 14; length > 0; --length) {
            source += alphabet[random() % alphabet.size()];
        }
        ASSERT_EQ(scanned(source, values, 40), searchedFromTheFront(source, values, 40)) << source;
    }
}

TEST(Variable, IsFoundAtOrAfterAPosition) {
    const std::string text = "$a ${b1} x$_c}";
    const auto second = findVariable(text, 1);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->at, 3U);
    EXPECT_EQ(second->name, "b1");
    const auto third = findVariable(text, second->at + second->text.str().size());
    ASSERT_TRUE(third);
    EXPECT_EQ(third->text, "$_c}");
    EXPECT_EQ(third->name, "_c");
    EXPECT_FALSE(findVariable(text, third->at + 1));
}

} // namespace
