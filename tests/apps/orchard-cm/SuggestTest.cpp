#include "apps/orchard-cm/base/Suggest.h"

#include <gtest/gtest.h>

using orchard_cm::editDistance;
using orchard_cm::Suggester;

namespace {
std::vector<std::string> suggest(std::string mistyped, const std::vector<std::string> &names,
                                 std::size_t count = 3) {
    Suggester suggester(std::move(mistyped));
    for (const auto &name : names) {
        suggester.offer(name);
    }
    return suggester.best(count);
}
} // namespace

TEST(EditDistance, CountsInsertionDeletionAndChange) {
    EXPECT_EQ(editDistance("checkout", "checkout", 9), 0U);
    EXPECT_EQ(editDistance("chekout", "checkout", 9), 1U);
    EXPECT_EQ(editDistance("checkouts", "checkout", 9), 1U);
    EXPECT_EQ(editDistance("chackout", "checkout", 9), 1U);
    EXPECT_EQ(editDistance("kitten", "sitting", 9), 3U);
    EXPECT_EQ(editDistance("", "abc", 9), 3U);
}
TEST(EditDistance, CountsASwapOfNeighboursOnce) { EXPECT_EQ(editDistance("chekcout", "checkout", 9), 1U); }
TEST(EditDistance, IgnoresCase) { EXPECT_EQ(editDistance("PUMP", "pump", 9), 0U); }
TEST(EditDistance, StopsAtTheLimit) {
    EXPECT_EQ(editDistance("kitten", "sitting", 2), 3U);
    EXPECT_EQ(editDistance("a", "abcdefgh", 2), 3U);
}
TEST(Suggester, GivesTheClosestFirst) {
    EXPECT_EQ(suggest("Valvee", {"Value", "Valve", "Pump"}), (std::vector<std::string>{"Valve", "Value"}));
}
TEST(Suggester, KeepsAwayFromNamesThatDifferTooMuch) {
    EXPECT_TRUE(suggest("Pump", {"Controller", "Tank"}).empty());
}
TEST(Suggester, TakesALongerNameThatBeginsAlike) {
    EXPECT_EQ(suggest("CMCheck", {"CMCheckOutFromArchive", "CMArchive"}),
              (std::vector<std::string>{"CMCheckOutFromArchive"}));
}
TEST(Suggester, NamesNothingTwiceAndNoMoreThanAsked) {
    EXPECT_EQ(suggest("Pumb", {"Pump", "Pump", "Pumpe", "Pumbo", "Plumb"}, 2).size(), 2U);
    EXPECT_EQ(suggest("Pumb", {"Pump", "Pump"}).size(), 1U);
}
TEST(Suggester, OffersNothingForAnEmptyName) { EXPECT_TRUE(suggest("", {"a", "b"}).empty()); }
