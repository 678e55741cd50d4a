#include "apps/orchard-cm/base/Words.h"

#include <gtest/gtest.h>

using orchard_cm::splitWords;
using orchard_cm::WordsError;
using List = std::vector<std::string>;

TEST(Words, ArePartedByBlanksAndTabs) {
    EXPECT_EQ(splitWords("  checkout \t Pump  "), (List{"checkout", "Pump"}));
}
TEST(Words, OfAnEmptyLineAreNone) {
    EXPECT_TRUE(splitWords("").empty());
    EXPECT_TRUE(splitWords(" \t ").empty());
}
TEST(Words, KeepEverythingInSingleQuotes) {
    EXPECT_EQ(splitWords(R"(expand 'co $mode "\x" # y')"), (List{"expand", R"(co $mode "\x" # y)"}));
}
TEST(Words, KeepAllButEscapedQuoteAndBackslashInDoubleQuotes) {
    EXPECT_EQ(splitWords(R"("a \"b\" \\ \n $c")"), (List{R"(a "b" \ \n $c)"}));
}
TEST(Words, TakeTheCharacterBehindABackslash) { EXPECT_EQ(splitWords(R"(a\ b \'c)"), (List{"a b", "'c"})); }
TEST(Words, JoinQuotedAndBareParts) { EXPECT_EQ(splitWords(R"(a'b c'"d e"f)"), (List{"ab cd ef"})); }
TEST(Words, HoldEmptyQuotesAsAnEmptyWord) {
    EXPECT_EQ(splitWords("property set Key ''"), (List{"property", "set", "Key", ""}));
}
TEST(Words, EndAtACommentThatBeginsAWord) {
    EXPECT_EQ(splitWords("list # all of them"), (List{"list"}));
    EXPECT_TRUE(splitWords("# nothing").empty());
    EXPECT_EQ(splitWords("show Pump#2"), (List{"show", "Pump#2"}));
}
TEST(Words, LoseTheCarriageReturnOfALine) { EXPECT_EQ(splitWords("list\r"), (List{"list"})); }
TEST(Words, KeepUmlauts) { EXPECT_EQ(splitWords("show 'Öl Pumpe.ocl'"), (List{"show", "Öl Pumpe.ocl"})); }
TEST(Words, ExpandNothing) { EXPECT_EQ(splitWords("$HOME * `x`"), (List{"$HOME", "*", "`x`"})); }
TEST(Words, TellWhereAQuoteStaysOpen) {
    try {
        splitWords("show 'Pump");
        FAIL() << "no error";
    } catch (const WordsError &error) {
        EXPECT_EQ(error.column(), 6U);
        EXPECT_STREQ(error.what(), "the quote ' that opens here is not closed");
    }
}
TEST(Words, RefuseABackslashAtTheEnd) {
    EXPECT_THROW(splitWords("show Pump\\"), WordsError);
    EXPECT_THROW(splitWords("show \"Pump\\"), WordsError);
}
