#include "CM/CMSupport/core/Unquotable.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

TEST(Unquotable, NamesTheCharacterThatEndsAQuotedTextOrIsReplacedInIt) {
    for (const char *const character : {"\"", "$", "`", ">"}) {
        const std::string path = std::string("/w/a") + character + "b.ocl";
        EXPECT_EQ(paths::unquotableIn(path), std::string("the character ") + character);
    }
}

TEST(Unquotable, FindsControlCharactersWhereverTheyStand) {
    using namespace std::string_view_literals;
    for (const auto path : {"\na"sv, "a\tb"sv, "a\r"sv, "a\0b"sv, "a\x1b[2J"sv, "a\x7f"sv}) {
        EXPECT_EQ(paths::unquotableIn(path), "a control character");
    }
}

TEST(Unquotable, ABackslashSeparatesButMustNotStandAtTheEnd) {
    EXPECT_THAT(paths::unquotableIn("C:\\w\\a.ocl"), IsEmpty());
    EXPECT_THAT(paths::unquotableIn("w\\\\a.ocl"), IsEmpty());
    EXPECT_THAT(paths::unquotableIn("C:\\w\\"), HasSubstr("backslash"));
}

TEST(Unquotable, FindsWhatATemplateTakesForAConditional) {
    for (const char *const path : {"/w/(x ? y).ocl", "/w/(x ? y : z).ocl", "/w (a)/b?c).ocl", "(?)"}) {
        EXPECT_THAT(paths::unquotableIn(path), HasSubstr("a condition")) << path;
    }
    for (const char *const path : {"/w/(x).ocl", "/w/x?).ocl", "/w/x? (y).ocl", "/w/(x) y?.ocl"}) {
        EXPECT_THAT(paths::unquotableIn(path), IsEmpty()) << path;
    }
}

TEST(Unquotable, EverythingElseCanBeQuoted) {
    for (const char *const path :
         {"", "-rf", "a b;c&d|e(f)'g'*?!<#~.ocl", "/w//x/../Pümpe.ocl", "\xff\xfe", "/"}) {
        EXPECT_THAT(paths::unquotableIn(path), IsEmpty()) << path;
    }
}

TEST(Unquotable, APathIsShownWithoutItsControlCharacters) {
    EXPECT_EQ(paths::shownPath("a\n\x1b[31mü$b"), "a??[31mü$b");
}

} // namespace
