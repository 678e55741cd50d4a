#include "CM/platform/Quotable.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Kind = platform::Unquotable::Kind;

std::optional<Kind> kindIn(std::string_view path) {
    const auto found = platform::findUnquotable(path);
    return found ? std::optional(found->kind) : std::nullopt;
}

TEST(Quotable, FindsTheFirstCharacterThatEndsAQuotedTextOrIsReplacedInIt) {
    for (const char character : std::string("\"$`>")) {
        const auto found = platform::findUnquotable(std::string("/w/a") + character + "b$\n.ocl");
        ASSERT_TRUE(found);
        EXPECT_EQ(found->kind, Kind::character);
        EXPECT_EQ(found->character, character);
    }
}

TEST(Quotable, FindsControlCharactersAnywhere) {
    using namespace std::string_view_literals;
    for (const auto path : {"\na"sv, "a\tb"sv, "a\r"sv, "a\0b"sv, "a\x1b[2J"sv, "a\x7f"sv}) {
        EXPECT_EQ(kindIn(path), Kind::controlCharacter);
    }
}

TEST(Quotable, ABackslashSeparatesButMustNotBeAtTheEnd) {
    EXPECT_FALSE(kindIn("C:\\w\\a.ocl"));
    EXPECT_FALSE(kindIn("w\\\\a.ocl"));
    EXPECT_EQ(kindIn("C:\\w\\"), Kind::backslashAtEnd);
}

TEST(Quotable, FindsWhatATemplateCouldTakeForAConditionalInAnyOrder) {
    // A path that is filled in twice makes a conditional from its second "?" or ")" too.
    for (const char *const path :
         {"/w/(x ? y).ocl", "/w/(x ? y : z).ocl", "/w (a)/b?c).ocl", "(?)", "/w/x? (y).ocl", "/w/(x) y?.ocl"}) {
        EXPECT_EQ(kindIn(path), Kind::conditional) << path;
    }
    for (const char *const path : {"/w/(x).ocl", "/w/x?).ocl", "/w/(x?.ocl"}) {
        EXPECT_FALSE(kindIn(path)) << path;
    }
}

TEST(Quotable, EverythingElseCanBeQuoted) {
    for (const char *const path : {"", "-rf", "a b;c&d|e(f)'g'*!<#~.ocl", "/w//x/../Pümpe.ocl", "\xff\xfe", "/"}) {
        EXPECT_FALSE(kindIn(path)) << path;
    }
}

} // namespace
