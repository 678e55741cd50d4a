#include "orchard/worker/Lines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> linesOf(const std::string &text) {
    CStringList list;
    orchard::appendLines(text, list);
    std::vector<std::string> lines;
    while (!list.IsEmpty()) {
        lines.push_back(list.RemoveHead().str());
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(Lines, KeepTheirLineEnds) { EXPECT_EQ(linesOf("one\ntwo\r\nthree"), (Lines{"one\n", "two\r\n", "three"})); }

TEST(Lines, AnEmptyTextHasNone) { EXPECT_EQ(linesOf(""), Lines()); }

TEST(Lines, AnEmptyLineIsALine) { EXPECT_EQ(linesOf("\n\na\n"), (Lines{"\n", "\n", "a\n"})); }

TEST(Lines, BytesStayAsTheyAre) {
    const std::string bytes("\xff\0\xfe\n\x80", 5);
    EXPECT_EQ(linesOf(bytes), (Lines{bytes.substr(0, 4), bytes.substr(4)}));
}

TEST(Lines, AreAppended) {
    CStringList list;
    orchard::appendLines("a\n", list);
    orchard::appendLines("b\n", list);
    EXPECT_EQ(list.GetCount(), 2);
}

TEST(Lines, ALongTextIsOneEntryAsItIs) {
    std::string text;
    while (text.size() <= 256 * 1024) {
        text += "a line of a long listing\n";
    }
    EXPECT_EQ(linesOf(text), Lines{text});
}

} // namespace
