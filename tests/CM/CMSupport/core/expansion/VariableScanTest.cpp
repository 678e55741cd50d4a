#include "CM/CMSupport/core/VariableScan.h"

#include "CM/platform/CString.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

namespace {

using Values = std::map<std::string, std::string>;

// What the scan has to agree with: the whole text searched from its front for each variable.
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
    SPStringList matches(20);
    while (steps-- > 0 && scan.find(matches)) {
        const auto value = values.find(matches[1].str());
        if (value == values.end()) {
            break;
        }
        scan.replace(value->second);
    }
    return scan.take();
}

TEST(VariableScan, GivesTheWholeVariableAndItsName) {
    VariableScan scan("a $$ ${unit}x");
    SPStringList matches(20);
    ASSERT_TRUE(scan.find(matches));
    ASSERT_EQ(matches.count(), 2);
    EXPECT_EQ(matches[0].str(), "${unit}");
    EXPECT_EQ(matches[1].str(), "unit");
}

TEST(VariableScan, EmptiesTheListWithoutAVariable) {
    VariableScan scan("a $$ $1 ${ $");
    SPStringList matches(20);
    matches.push(SPString("before"));
    EXPECT_FALSE(scan.find(matches));
    EXPECT_EQ(matches.count(), 0);
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

} // namespace
