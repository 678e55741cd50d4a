// CString: comparing, searching and cutting.
#include "CM/platform/CString.h"

#include <gtest/gtest.h>

#include <unordered_set>

namespace {

TEST(CString, TakesANullPointerForTheEmptyText) {
    const char *nothing = nullptr;
    EXPECT_TRUE(CString(nothing).IsEmpty());
    EXPECT_EQ(CString("a") + nothing, "a");
}

TEST(CString, ComparesToMinusOneZeroOrOne) {
    EXPECT_EQ(CString("a").Compare("c"), -1);
    EXPECT_EQ(CString("c").Compare("a"), 1);
    EXPECT_EQ(CString("a").Compare("a"), 0);
    EXPECT_EQ(CString("a").Compare("ab"), -1);
    EXPECT_EQ(CString("B").Compare("a"), -1) << "the case counts";
    EXPECT_EQ(CString("\xFF").Compare("a"), 1) << "bytes have no sign";
}

TEST(CString, ComparesWithoutCaseToMinusOneZeroOrOne) {
    EXPECT_EQ(CString("YES").CompareNoCase("yes"), 0);
    EXPECT_EQ(CString("B").CompareNoCase("a"), 1);
    EXPECT_EQ(CString("a").CompareNoCase("C"), -1);
    EXPECT_EQ(CString("yes").CompareNoCase("YESS"), -1);
    EXPECT_EQ(CString("yess").CompareNoCase("YES"), 1);
    EXPECT_EQ(CString("").CompareNoCase(""), 0);
    EXPECT_EQ(CString("\xFF").CompareNoCase("a"), 1);
    EXPECT_EQ(CString("[").CompareNoCase("{"), -1) << "letters only";
}

TEST(CString, FindsFromAPlaceOn) {
    const CString text("abcabc");
    EXPECT_EQ(text.Find("bc"), 1);
    EXPECT_EQ(text.Find("bc", 2), 4);
    EXPECT_EQ(text.Find('c', 3), 5);
    EXPECT_EQ(text.Find("x"), -1);
    EXPECT_EQ(text.Find("a", 100), -1);
    EXPECT_EQ(text.Find("a", -5), 0);
    EXPECT_EQ(text.Find(""), 0);
}

TEST(CString, FindsFromTheEnd) {
    EXPECT_EQ(CString("a/b/c").ReverseFind('/'), 3);
    EXPECT_EQ(CString("abc").ReverseFind('/'), -1);
    EXPECT_EQ(CString("").ReverseFind('/'), -1);
}

TEST(CString, FindsAnyOfASet) {
    EXPECT_EQ(CString("a/b\\c").FindOneOf("\\/"), 1);
    EXPECT_EQ(CString("a/b\\c").ReverseFindOneOf("\\/"), 3);
    EXPECT_EQ(CString("abc").FindOneOf("\\/"), -1);
    EXPECT_EQ(CString("abc").ReverseFindOneOf("\\/"), -1);
}

TEST(CString, CutsPartsAndClampsToTheText) {
    const CString text("abcdef");
    EXPECT_EQ(text.Left(2), "ab");
    EXPECT_EQ(text.Left(100), "abcdef");
    EXPECT_EQ(text.Left(-1), "");
    EXPECT_EQ(text.Right(2), "ef");
    EXPECT_EQ(text.Right(100), "abcdef");
    EXPECT_EQ(text.Right(-1), "");
    EXPECT_EQ(text.Mid(2), "cdef");
    EXPECT_EQ(text.Mid(2, 2), "cd");
    EXPECT_EQ(text.Mid(5, 100), "f");
    EXPECT_EQ(text.Mid(100), "");
    EXPECT_EQ(text.Mid(-3, 2), "ab");
}

TEST(CString, GivesNulOutsideTheText) {
    CString text("ab");
    EXPECT_EQ(text.GetAt(1), 'b');
    EXPECT_EQ(text[2], '\0');
    EXPECT_EQ(text.GetAt(-1), '\0');
    text.SetAt(0, 'x');
    text.SetAt(2, 'y');
    text.SetAt(-1, 'z');
    EXPECT_EQ(text, "xb");
}

TEST(CString, HoldsNuls) {
    const CString text(std::string("a\0b", 3));
    EXPECT_EQ(text.GetLength(), 3);
    EXPECT_EQ((text + "c").GetLength(), 4);
    EXPECT_FALSE(text == "a");
}

TEST(CString, HashesWithoutCaseAgreeWithTheComparison) {
    std::unordered_set<std::string, NoCaseHash, NoCaseEqual> names{"SccServerPath"};
    EXPECT_TRUE(names.contains("SCCSERVERPATH"));
    EXPECT_FALSE(names.contains("SccServerPat"));
    EXPECT_FALSE(NoCaseEqual()("[", "{"));
}

} // namespace
