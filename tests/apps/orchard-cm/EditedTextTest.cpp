#include "apps/orchard-cm/base/EditedText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orchard_cm;
using testing::HasSubstr;
using testing::Not;

TEST(EditedText, LosesItsRemarks) {
    EXPECT_EQ(withoutRemarks("one\n# remark\n #two\n#\nthree"), "one\n #two\nthree\n");
}
TEST(EditedText, ThatWasLeftAsItWasIsNoComment) {
    EXPECT_EQ(tidied(withoutRemarks(remarksFor("checked in", {"Drives/Pump", "#odd"}))), "");
}
TEST(EditedText, NamesTheUnitsInItsRemarks) {
    const auto text = remarksFor("checked in", {"Drives/Pump", "Panel"});
    EXPECT_THAT(text, HasSubstr("To be checked in:\n#     Drives/Pump\n#     Panel\n"));
}
TEST(EditedText, NamesSoManyUnitsAndCountsTheOthers) {
    const auto text = remarksFor("checked in", std::vector<std::string>(1000, "Unit"));
    EXPECT_THAT(text, HasSubstr("and 950 more"));
    EXPECT_LT(std::count(text.begin(), text.end(), '\n'), 60);
}

TEST(TidiedText, HasPlainLineEndsAndNoBlanksAtTheirEnds) {
    EXPECT_EQ(tidied("one \t\r\n  two\r\n\r\nthree"), "one\n  two\n\nthree");
}
TEST(TidiedText, HasNoEmptyLinesAtEitherEnd) { EXPECT_EQ(tidied("\n \n\r\none\n\n \n"), "one"); }
TEST(TidiedText, OfBlanksIsEmpty) { EXPECT_EQ(tidied(" \n\t\n"), ""); }
