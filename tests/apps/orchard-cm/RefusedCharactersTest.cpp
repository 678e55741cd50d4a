#include "apps/orchard-cm/model/RefusedCharacters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using orchard_cm::commentFault;
using orchard_cm::labelFault;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(LabelCheck, TakesTheNamesThatToolsGiveToVersions) {
    for (const auto *label :
         {"", "1.1", "1.2.1.4", "rel-2_0", "two words", "R\u00fcckgabe", "a/b", "x@y", "#3", "v1,v2"}) {
        EXPECT_THAT(labelFault(label), IsEmpty()) << label;
    }
}

TEST(LabelCheck, NamesEachCharacterThatAShellActsOn) {
    for (const char c : std::string_view("\"'$`\\;&|<>()")) {
        EXPECT_THAT(labelFault(std::string("1.1") + c), HasSubstr(std::string("the character ") + c));
    }
}

TEST(LabelCheck, RefusesLineEndsAndOtherControlCharacters) {
    EXPECT_THAT(labelFault("1.1\n2"), HasSubstr("a line end"));
    for (const char c : std::string_view("\0\t\r\x1b\x7f", 5)) {
        EXPECT_THAT(labelFault(std::string("1.1") + c), HasSubstr(c == '\t' ? "a tab" : "a control character"));
    }
}

TEST(LabelCheck, RefusesWhatAToolWouldTakeForAnOption) {
    EXPECT_THAT(labelFault("-l"), HasSubstr("the character -"));
    EXPECT_THAT(labelFault("a-l"), IsEmpty());
}

TEST(LabelCheck, RefusesOnlyWhatTheToolsSetNames) {
    EXPECT_THAT(labelFault("v1.0^{}", "'\""), IsEmpty());
    EXPECT_THAT(labelFault("a;b", "'\""), IsEmpty());
    EXPECT_THAT(labelFault("a'b", "'\""), HasSubstr("the character '"));
    EXPECT_THAT(labelFault("a\nb", ""), HasSubstr("a line end"));
    EXPECT_THAT(labelFault("a b", " "), HasSubstr("a blank"));
}

TEST(CommentCheck, TakesLinesTabsAndALeadingDash) {
    EXPECT_THAT(commentFault("- first\n\t- second, at 100 %", "\"$`\\"), IsEmpty());
}

TEST(CommentCheck, NamesTheCharacterThatTheSetRefuses) {
    EXPECT_THAT(commentFault("costs $5", "\"$`\\"), HasSubstr("the character $"));
    EXPECT_THAT(commentFault("one\ntwo", "\n"), HasSubstr("a line end"));
}

TEST(CommentCheck, RefusesControlCharactersInAnyCase) {
    for (const char c : std::string_view("\0\r\x1b\x7f", 4)) {
        EXPECT_THAT(commentFault(std::string("a") + c, ""), HasSubstr("a control character"));
    }
}
