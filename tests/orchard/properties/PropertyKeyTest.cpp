#include "orchard/properties/PropertyKey.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

using orchard::PropertyKey;

TEST(PropertyKey, IgnoresTheCaseOfLetters) {
    const PropertyKey one{"ConfigurationManagement", "RCS", "CheckOutFromArchive"};
    const PropertyKey other{"configurationMANAGEMENT", "rcs", "checkoutfromARCHIVE"};
    EXPECT_EQ(one, other);
    EXPECT_EQ(one.hash(), other.hash());
}

TEST(PropertyKey, TellsTheThreePartsApart) {
    const PropertyKey key{"ab", "c", "d"};
    for (const PropertyKey &other : {PropertyKey{"a", "bc", "d"}, PropertyKey{"ab", "cd", ""},
                                     PropertyKey{"ab", "d", "c"}, PropertyKey{"ab", "c", "dd"}}) {
        EXPECT_FALSE(key == other);
        EXPECT_NE(key.hash(), other.hash());
    }
}

TEST(PropertyKey, CharactersThatDifferInTheCaseBitOnlyAreNotAlike) {
    EXPECT_FALSE((PropertyKey{"s", "m", "a[b"} == PropertyKey{"s", "m", "a{b"}));
    EXPECT_FALSE((PropertyKey{"s", "m", "@"} == PropertyKey{"s", "m", "`"}));
}

TEST(PropertyKey, EmptyPartsAreParts) {
    EXPECT_EQ((PropertyKey{{}, {}, {}}), (PropertyKey{"", "", ""}));
    EXPECT_EQ((PropertyKey{{}, {}, {}}).hash(), (PropertyKey{"", "", ""}).hash());
}

TEST(PropertyKey, HashesOfManyNamesDiffer) {
    std::set<std::uint64_t> hashes;
    for (int i = 0; i < 10'000; ++i) {
        const std::string name = "UserDefCommand_" + std::to_string(i);
        hashes.insert(PropertyKey{"ConfigurationManagement", "RCS", name}.hash());
    }
    EXPECT_EQ(hashes.size(), 10'000U);
}

} // namespace
