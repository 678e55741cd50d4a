#include "CM/platform/CMap.h"
#include "CM/platform/CString.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

using Map = CMap<CString, const CString &, int, int>;

std::vector<std::string> keysOf(const Map &map) {
    std::vector<std::string> keys;
    for (auto position = map.GetStartPosition(); position;) {
        CString key;
        int value = 0;
        map.GetNextAssoc(position, key, value);
        keys.push_back(key.str() + "=" + std::to_string(value));
    }
    return keys;
}

TEST(CMap, GivesWhatWasSet) {
    Map map;
    map.SetAt("a", 1);
    map["b"] = 2;
    int value = 0;
    EXPECT_TRUE(map.Lookup("a", value));
    EXPECT_EQ(value, 1);
    EXPECT_EQ(map["b"], 2);
    EXPECT_EQ(map.GetCount(), 2);
}

TEST(CMap, LeavesTheValueAloneWhenAKeyIsMissing) {
    const Map map;
    int value = 7;
    EXPECT_FALSE(map.Lookup("a", value));
    EXPECT_EQ(value, 7);
}

TEST(CMap, MakesANewKeyWithTheDefaultValue) {
    Map map;
    EXPECT_EQ(map["a"], 0);
    EXPECT_EQ(map.GetCount(), 1);
}

TEST(CMap, IsWalkedInTheOrderInWhichTheKeysCameIn) {
    Map map;
    for (const char *key : {"z", "a", "m", "b"}) {
        map.SetAt(key, map.GetCount());
    }
    map.SetAt("z", 9);
    EXPECT_THAT(keysOf(map), ElementsAre("z=9", "a=1", "m=2", "b=3")) << "a key set again keeps its place";
    map.RemoveKey("a");
    map.SetAt("a", 5);
    EXPECT_THAT(keysOf(map), ElementsAre("z=9", "m=2", "b=3", "a=5")) << "a key that was away comes last";
}

TEST(CMap, RemovesKeys) {
    Map map;
    map.SetAt("a", 1);
    EXPECT_TRUE(map.RemoveKey("a"));
    EXPECT_FALSE(map.RemoveKey("a"));
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_FALSE(map.GetStartPosition());
}

TEST(CMap, LetsAWalkRemoveTheKeyItHasPassed) {
    Map map;
    for (const char *key : {"a", "b", "c"}) {
        map.SetAt(key, 1);
    }
    for (auto position = map.GetStartPosition(); position;) {
        CString key;
        int value = 0;
        map.GetNextAssoc(position, key, value);
        map.RemoveKey(key);
    }
    EXPECT_TRUE(map.IsEmpty());
}

TEST(CMap, IsEmptyAgainAfterRemoveAll) {
    Map map;
    map.SetAt("a", 1);
    map.RemoveAll();
    EXPECT_EQ(map.GetCount(), 0);
    map.SetAt("a", 2);
    EXPECT_THAT(keysOf(map), ElementsAre("a=2"));
}

TEST(CMap, TakesPointersForKeys) {
    CMap<const void *, const void *, int, int> map;
    int first = 0;
    int second = 0;
    map.SetAt(&first, 1);
    map.SetAt(&second, 2);
    EXPECT_EQ(map[&first], 1);
    EXPECT_EQ(map[&second], 2);
}

TEST(CMap, KeepsOrderAndValuesWhenRoomIsMade) {
    Map map;
    map.SetAt("z", 1);
    map.SetAt("a", 2);
    map.InitHashTable(10000);
    EXPECT_THAT(keysOf(map), ElementsAre("z=1", "a=2"));
    map.RemoveAll();
    map.SetAt("b", 3);
    EXPECT_THAT(keysOf(map), ElementsAre("b=3"));
}

TEST(CMap, GivesARangeTheKeysInTheSameOrder) {
    CMap<int *, int *, int, int> map;
    int objects[3] = {};
    map.SetAt(&objects[2], 2);
    map.SetAt(&objects[0], 0);
    map.SetAt(&objects[1], 1);
    map.RemoveKey(&objects[0]);
    std::vector<int> values;
    for (const auto &[object, value] : map) {
        EXPECT_EQ(object, &objects[value]);
        values.push_back(value);
    }
    EXPECT_THAT(values, ElementsAre(2, 1));
}

} // namespace
