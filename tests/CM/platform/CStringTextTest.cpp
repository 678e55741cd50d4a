// CString: changing the text.
#include "CM/platform/CString.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

TEST(CStringText, ReplacesEveryOccurrenceAndCounts) {
    CString text("aXbXc");
    EXPECT_EQ(text.Replace("X", "--"), 2);
    EXPECT_EQ(text, "a--b--c");
    EXPECT_EQ(text.Replace("--", ""), 2);
    EXPECT_EQ(text, "abc");
    EXPECT_EQ(text.Replace("X", "y"), 0);
}

TEST(CStringText, DoesNotScanWhatWasPutIn) {
    CString text("aa");
    EXPECT_EQ(text.Replace("a", "aa"), 2);
    EXPECT_EQ(text, "aaaa");
    EXPECT_EQ(text.Replace("aa", "a"), 2);
    EXPECT_EQ(text, "aa");
}

TEST(CStringText, ReplacesNothingForAnEmptyText) {
    CString text("ab");
    EXPECT_EQ(text.Replace("", "x"), 0);
    EXPECT_EQ(text, "ab");
}

TEST(CStringText, ReplacesItselfByItself) {
    CString text("ab");
    EXPECT_EQ(text.Replace(text, text + text), 1);
    EXPECT_EQ(text, "abab");
}

TEST(CStringText, ReplacesAndRemovesCharacters) {
    CString text("a/b/c");
    EXPECT_EQ(text.Replace('/', '\\'), 2);
    EXPECT_EQ(text, "a\\b\\c");
    EXPECT_EQ(text.Remove('\\'), 2);
    EXPECT_EQ(text, "abc");
}

TEST(CStringText, InsertsAndDeletes) {
    CString text("ad");
    EXPECT_EQ(text.Insert(1, "bc"), 4);
    EXPECT_EQ(text.Insert(100, "e"), 5);
    EXPECT_EQ(text.Insert(-1, "_"), 6);
    EXPECT_EQ(text, "_abcde");
    EXPECT_EQ(text.Delete(0), 5);
    EXPECT_EQ(text.Delete(3, 100), 3);
    EXPECT_EQ(text.Delete(7), 3);
    EXPECT_EQ(text.Delete(0, -1), 3);
    EXPECT_EQ(text, "abc");
}

TEST(CStringText, TrimsWhiteSpaceOnEitherSide) {
    EXPECT_EQ(CString(" \t\r\n\v\fa b \n").Trim(), "a b");
    EXPECT_EQ(CString("  a ").TrimLeft(), "a ");
    EXPECT_EQ(CString(" a  ").TrimRight(), " a");
    EXPECT_EQ(CString(" \n ").Trim(), "");
    EXPECT_EQ(CString("").Trim(), "");
}

TEST(CStringText, TrimsASetOfCharacters) {
    EXPECT_EQ(CString("\"'a'\"").Trim("\"'"), "a");
    EXPECT_EQ(CString("xxa").TrimLeft("x"), "a");
    EXPECT_EQ(CString("a//").TrimRight("/"), "a");
    EXPECT_EQ(CString("a//").TrimRight(""), "a//");
}

TEST(CStringText, ChangesTheCaseOfAsciiLettersOnly) {
    EXPECT_EQ(CString("aZ1\xC3\xA4").MakeUpper(), "AZ1\xC3\xA4");
    EXPECT_EQ(CString("aZ1\xC3\x84").MakeLower(), "az1\xC3\x84");
}

TEST(CStringText, FormatsAnyLength) {
    CString text;
    text.Format("%s-%d", std::string(5000, 'x').c_str(), 7);
    EXPECT_EQ(text.GetLength(), 5002);
    EXPECT_EQ(text.Right(3), "x-7");
    text.Format("%s", "");
    EXPECT_EQ(text, "");
}

TEST(CStringText, FormatsWithItselfAmongTheArguments) {
    CString text("old");
    text.Format("<%s|%s>", text.c_str(), text.c_str());
    EXPECT_EQ(text, "<old|old>");
    text.AppendFormat("+%s", text.c_str());
    EXPECT_EQ(text, "<old|old>+<old|old>");
}

TEST(CStringText, AppendsItself) {
    CString text("ab");
    text += text;
    EXPECT_EQ(text, "abab");
    text += 'c';
    EXPECT_EQ("x" + text + 'y', "xababcy");
}

TEST(CStringText, LendsABufferThatEndsAtItsNul) {
    CString text("old");
    char *buffer = text.GetBuffer(100);
    EXPECT_STREQ(buffer, "old");
    EXPECT_EQ(buffer[100], '\0') << "the closing NUL lies behind the length that was asked for";
    std::strcpy(buffer, "new text"); // NOLINT(clang-analyzer-security.insecureAPI.strcpy): what such a call does
    text.ReleaseBuffer();
    EXPECT_EQ(text, "new text");
    EXPECT_EQ(text.GetLength(), 8);
}

TEST(CStringText, LendsABufferThatEndsWhereItIsTold) {
    CString text;
    std::memcpy(text.GetBuffer(10), "abcdef", 6);
    text.ReleaseBuffer(3);
    EXPECT_EQ(text, "abc");
    static_cast<void>(text.GetBuffer(2));
    text.ReleaseBuffer(100);
    EXPECT_EQ(text, "abc") << "never longer than the buffer";
}

TEST(CStringText, EmptiesAndFills) {
    CString text('x', 3);
    EXPECT_EQ(text, "xxx");
    text.Empty();
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(CString('x', -1), "");
}

} // namespace
