// Tests that a pattern that is compiled once returns the same results as the text class.
#include "CM/host/SPString.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using Parts = std::vector<std::string>;

Parts byPattern(const std::string &text, const char *pattern) {
    Parts parts;
    SPPattern(pattern).split(text, [&](std::string_view part) { parts.emplace_back(part); });
    return parts;
}

Parts byList(const std::string &text, const char *pattern) {
    SPStringList list;
    list.split(text, pattern, -1);
    Parts parts;
    while (list.count() > 0) {
        parts.push_back(list.shift().str());
    }
    return parts;
}

TEST(Pattern, SplitGivesWhatTheListGivesForAnyNumberOfParts) {
    for (const std::size_t count : {1U, 2U, 255U, 256U, 257U, 511U, 512U, 513U, 1000U}) {
        std::string text;
        for (std::size_t at = 0; at < count; ++at) {
            text += (at == 0 ? "" : ";") + std::to_string(at);
        }
        const Parts parts = byPattern(text, ";");
        EXPECT_EQ(parts.size(), count);
        EXPECT_EQ(parts, byList(text, ";"));
        EXPECT_EQ(byPattern(text, "[;]+"), parts);
        EXPECT_EQ(byPattern(text + ";", ";").size(), count + 1) << "an empty part at the end";
    }
    EXPECT_TRUE(byPattern("", ";").empty());
    for (const char *const pattern : {"", ";*", "^", "$", "x"}) {
        EXPECT_EQ(byPattern("a;;b;", pattern), byList("a;;b;", pattern)) << pattern;
    }
}

TEST(Pattern, SplitTakesAccountOfCase) {
    EXPECT_EQ(byPattern("axbXc", "x"), (Parts{"a", "bXc"}));
    EXPECT_EQ(byList("axbXc", "x"), (Parts{"a", "bXc"}));
}

TEST(Pattern, MatchGivesTheFirstGroup) {
    std::string_view group = "as it was";
    EXPECT_EQ(SPPattern("rev: (\\d+)").m("no", group), 0);
    EXPECT_EQ(group, "as it was");
    EXPECT_NE(SPPattern("rev: (\\d+)").m("rev: 12 by ann", group), 0);
    EXPECT_EQ(group, "12");
    EXPECT_NE(SPPattern("REV: (\\d+)", "i").m("rev: 3", group), 0);
    EXPECT_EQ(group, "3");
    for (const char *const pattern : {"rev", "re(x)?v", "r[e]v"}) {
        group = "as it was";
        EXPECT_NE(SPPattern(pattern).m("rev: 3", group), 0) << pattern;
        EXPECT_EQ(group, "") << pattern;
    }
}

TEST(Split, TheTextMayBeAnEntryOfTheListItself) {
    SPStringList list;
    list.push("a long text in an entry,another long text in an entry");
    EXPECT_EQ(list.split(list[0], ","), 2);
    EXPECT_EQ(list[1].str(), "another long text in an entry");
}

} // namespace
