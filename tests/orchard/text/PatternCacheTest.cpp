#include "orchard/text/PatternCache.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(PatternCache, GivesTheSamePatternAgain) {
    orchard::PatternCache cache;
    EXPECT_EQ(cache.get("a+", "i"), cache.get("a+", "i"));
    EXPECT_EQ(cache.count(), 1U);
}

TEST(PatternCache, TellsFlagsApart) {
    orchard::PatternCache cache;
    EXPECT_NE(cache.get("a+", "i"), cache.get("a+", ""));
}

TEST(PatternCache, HoldsABoundedNumber) {
    orchard::PatternCache cache(4);
    for (int i = 0; i < 1000; ++i) {
        cache.get("a{" + std::to_string(i + 1) + "}", "");
        EXPECT_LE(cache.count(), 8U);
    }
}

TEST(PatternCache, KeepsAPatternThatStaysInUse) {
    orchard::PatternCache cache(4);
    const auto kept = cache.get("kept.", "");
    for (int i = 0; i < 100; ++i) {
        cache.get("other." + std::to_string(i), "");
        ASSERT_EQ(cache.get("kept.", ""), kept);
    }
}

TEST(PatternCache, APatternOutlivesItsPlaceInTheCache) {
    orchard::PatternCache cache(1);
    const auto kept = cache.get("k.pt", "");
    for (int i = 0; i < 10; ++i) {
        cache.get("other." + std::to_string(i), "");
    }
    orchard::TimeAllowance time;
    std::vector<orchard::Span> spans;
    EXPECT_TRUE(kept->search("kept", 0, false, time, spans));
}

} // namespace
