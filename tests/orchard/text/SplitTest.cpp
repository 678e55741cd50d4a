#include "CM/host/SPString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Parts = std::vector<std::string>;

Parts split(const char *text, const char *pattern, int limit = 0) {
    SPStringList list;
    list.push("left over");
    const int count = list.split(text, pattern, limit);
    Parts parts;
    while (list.count() > 0) {
        parts.push_back(list.shift().str());
    }
    EXPECT_EQ(static_cast<std::size_t>(count), parts.size());
    return parts;
}

TEST(Split, CutsBetweenTheMatches) { EXPECT_EQ(split("a, b,c", ", *"), (Parts{"a", "b", "c"})); }

TEST(Split, WithoutAMatchGivesTheWholeText) { EXPECT_EQ(split("abc", ","), (Parts{"abc"})); }

TEST(Split, OfTheEmptyTextGivesNothing) { EXPECT_EQ(split("", ","), Parts()); }

TEST(Split, KeepsAnEmptyPartInFront) { EXPECT_EQ(split(",a", ","), (Parts{"", "a"})); }

TEST(Split, DropsEmptyPartsAtTheEndWithoutALimit) { EXPECT_EQ(split("a,,b,,", ","), (Parts{"a", "", "b"})); }

TEST(Split, KeepsEmptyPartsAtTheEndWithANegativeLimit) {
    EXPECT_EQ(split("a,b,,", ",", -1), (Parts{"a", "b", "", ""}));
}

TEST(Split, GivesNoMorePartsThanTheLimit) {
    EXPECT_EQ(split("a,b,c,d", ",", 2), (Parts{"a", "b,c,d"}));
    EXPECT_EQ(split("a,b", ",", 1), (Parts{"a,b"}));
    EXPECT_EQ(split("a,b,", ",", 9), (Parts{"a", "b", ""}));
}

TEST(Split, CutsIntoCharactersAtAnEmptyPattern) { EXPECT_EQ(split("abc", ""), (Parts{"a", "b", "c"})); }

TEST(Split, AnEmptyPatternCutsNothingOffAtEitherEnd) { EXPECT_EQ(split("abc", "", -1), (Parts{"a", "b", "c"})); }

TEST(Split, CutsALastLineOffAlsoIfItIsEmpty) {
    EXPECT_EQ(split("one\ntwo\n", "\n", -1), (Parts{"one", "two", ""}));
}

TEST(Split, ADelimiterThatTakesWhatStandsBeforeItIsFoundInTheMiddleOfALineAlsoInALongText) {
    const Parts once{"", "", "cc\n"};
    std::string text;
    Parts expected;
    for (int line = 0; line < 3000; ++line) {
        text += "aaa;bb;cc\n";
        expected.insert(expected.end(), line == 0 ? once.begin() : once.begin() + 1, once.end());
    }
    EXPECT_EQ(split("aaa;bb;cc\naaa;bb;cc\n", ".*?;", -1), (Parts{"", "", "cc\n", "", "cc\n"}));
    EXPECT_EQ(split(text.c_str(), ".*?;", -1), expected);
}

TEST(Split, CutsAMillionRecords) {
    std::string text;
    for (int i = 0; i < 1'000'000; ++i) {
        text += "record;;";
    }
    SPStringList list;
    EXPECT_EQ(list.split(text, ";+", -1), 1'000'001);
    EXPECT_EQ(list[999'999].str(), "record");
}

} // namespace
