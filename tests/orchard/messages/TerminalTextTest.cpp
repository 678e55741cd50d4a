#include "orchard/messages/TerminalText.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using orchard::typedOption;

TEST(ForTerminal, TakesAwayWhatCouldChangeTheTerminal) {
    EXPECT_EQ(orchard::forTerminal("a\x1b[2Jb\rc\ad\x7f"
                                   "e"),
              "a?[2Jbc?d?e");
    EXPECT_EQ(orchard::forTerminal("a\xc2\x9b"
                                   "2J"),
              "a?2J");
}

TEST(ForTerminal, LeavesTextAsItIs) {
    EXPECT_EQ(orchard::forTerminal("one\n\ttwo \xc3\xa4\xc3\x9f \xc2\xa0 \xff"),
              "one\n\ttwo \xc3\xa4\xc3\x9f \xc2\xa0 \xff");
}

struct Row {
    const char *name;
    const char *typed;
    int index; ///< -1 for none
    friend std::ostream &operator<<(std::ostream &stream, const Row &row) { return stream << row.typed; }
};

class TypedOption : public testing::TestWithParam<Row> {};

TEST_P(TypedOption, IsTheOneThatFits) {
    const auto found = typedOption(GetParam().typed, {"Yes", "Yes to all", "No", "Cancel"});
    EXPECT_EQ(found ? static_cast<int>(*found) : -1, GetParam().index);
}

TEST(TypedOptionOfMany, IsNoneWhereTheBeginningFitsSeveral) {
    EXPECT_FALSE(typedOption("c", {"Cancel", "Close"}));
    EXPECT_FALSE(typedOption("c", {"Cancel", "Close it", "Close"}));
    EXPECT_EQ(typedOption("c", {"Close it", "Close"}), std::optional<std::size_t>(1));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TypedOption,
    testing::Values(Row{"ANumber", "3", 2}, Row{"NoSuchNumber", "5", -1}, Row{"Zero", "0", -1},
                    Row{"Negative", "-1", -1}, Row{"TheWholeText", "yes", 0},
                    Row{"AWholeTextOfSeveralWords", "YES TO ALL", 1}, Row{"ALetterThatFitsOne", "n", 2},
                    Row{"ALetterThatFitsOneAndALongerOne", "y", 0}, Row{"TheBeginningOfOne", "yes t", 1},
                    Row{"Nothing", "", -1}, Row{"SomethingElse", "maybe", -1}, Row{"TooMuch", "nope", -1}),
    [](const auto &row) { return row.param.name; });

} // namespace
