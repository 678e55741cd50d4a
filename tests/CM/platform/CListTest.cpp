#include "CM/platform/CList.h"
#include "CM/platform/CStringList.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

using testing::ElementsAre;

using Numbers = CList<int, int>;

TEST(CList, AppendsAndPrepends) {
    Numbers list;
    list.AddTail(2);
    list.AddTail(3);
    list.AddHead(1);
    EXPECT_THAT(list, ElementsAre(1, 2, 3));
    EXPECT_EQ(list.GetCount(), 3);
    EXPECT_EQ(list.GetHead(), 1);
    EXPECT_EQ(list.GetTail(), 3);
}

TEST(CList, HandsRemovedEndsBack) {
    Numbers list{1, 2, 3};
    EXPECT_EQ(list.RemoveTail(), 3);
    EXPECT_EQ(list.RemoveHead(), 1);
    EXPECT_THAT(list, ElementsAre(2));
    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
}

TEST(CList, IsWalkedForwardsAndBackwards) {
    Numbers list{1, 2, 3};
    std::vector<int> seen;
    for (auto position = list.GetHeadPosition(); position;) {
        seen.push_back(list.GetNext(position));
    }
    EXPECT_THAT(seen, ElementsAre(1, 2, 3));
    seen.clear();
    for (auto position = list.GetTailPosition(); position;) {
        seen.push_back(list.GetPrev(position));
    }
    EXPECT_THAT(seen, ElementsAre(3, 2, 1));
}

TEST(CList, HasNoPositionsWhenEmpty) {
    const Numbers list;
    EXPECT_FALSE(list.GetHeadPosition());
    EXPECT_FALSE(list.GetTailPosition());
    EXPECT_FALSE(list.FindIndex(0));
}

TEST(CList, KeepsPositionsWhileOtherEntriesComeAndGo) {
    Numbers list{1, 2, 3};
    const auto two = list.Find(2);
    list.RemoveHead();
    list.RemoveTail();
    for (int entry = 0; entry < 100; ++entry) {
        list.AddHead(entry);
        list.AddTail(entry);
    }
    EXPECT_EQ(list.GetAt(two), 2);
    list.SetAt(two, 5);
    EXPECT_EQ(list.GetAt(two), 5);
}

TEST(CList, RemovesTheEntryBehindAWalkThatHasMovedOn) {
    Numbers list{1, 2, 3, 4};
    for (auto position = list.GetHeadPosition(); position;) {
        const auto here = position;
        if (list.GetNext(position) % 2 == 0) {
            list.RemoveAt(here);
        }
    }
    EXPECT_THAT(list, ElementsAre(1, 3));
}

TEST(CList, InsertsBesideAPositionOrAtTheEndsWithoutOne) {
    Numbers list{2};
    const auto two = list.GetHeadPosition();
    list.InsertBefore(two, 1);
    list.InsertAfter(two, 3);
    list.InsertBefore({}, 0);
    list.InsertAfter({}, 4);
    EXPECT_THAT(list, ElementsAre(0, 1, 2, 3, 4));
}

TEST(CList, FindsTheNextEqualEntryBehindAPosition) {
    Numbers list{7, 1, 7};
    const auto first = list.Find(7);
    EXPECT_EQ(first, list.GetHeadPosition());
    const auto second = list.Find(7, first);
    EXPECT_EQ(second, list.GetTailPosition());
    EXPECT_FALSE(list.Find(7, second));
    EXPECT_FALSE(list.Find(9));
}

TEST(CList, FindsAnEntryByItsIndex) {
    Numbers list{5, 6};
    EXPECT_EQ(list.GetAt(list.FindIndex(1)), 6);
    EXPECT_FALSE(list.FindIndex(2));
    EXPECT_FALSE(list.FindIndex(-1));
}

TEST(CList, AppendsAnotherListAndItself) {
    Numbers list{1, 2};
    list.AddTail(Numbers{3});
    list.AddTail(list);
    EXPECT_THAT(list, ElementsAre(1, 2, 3, 1, 2, 3));
}

TEST(CList, CopiesItsEntries) {
    Numbers list{1, 2};
    Numbers copy = list;
    copy.SetAt(copy.GetHeadPosition(), 9);
    EXPECT_THAT(list, ElementsAre(1, 2));
    EXPECT_THAT(copy, ElementsAre(9, 2));
}

TEST(CList, TakesABlockSizeThatChangesNothing) { EXPECT_TRUE(Numbers(50).IsEmpty()); }

TEST(CStringList, HoldsTexts) {
    CStringList list;
    list.AddTail("one\n");
    list.AddTail("two");
    EXPECT_THAT(list, ElementsAre("one\n", "two"));
    EXPECT_EQ(list.Find(CString("two")), list.GetTailPosition());
    EXPECT_FALSE(list.Find(CString("TWO"))) << "the case counts";
}

} // namespace
