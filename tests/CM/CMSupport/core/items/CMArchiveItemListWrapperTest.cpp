#include "CM/CMSupport/core/CMArchiveItem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

// That each item is deleted exactly once is what the leak and use-after-free checks of the sanitizers watch.
CMArchiveItem *item() { return new CMArchiveItem("Pump.ocl", "1.1", CMArchiveItem::unknown, "", ""); }

TEST(ArchiveItemListWrapper, OwnsItsItems) {
    CMArchiveItemListWrapper items;
    CMArchiveItem *const first = item();
    CMArchiveItem *const second = item();
    items.addTail(first);
    items.addTail(second);
    EXPECT_THAT(items.list(), ElementsAre(first, second));
}

TEST(ArchiveItemListWrapper, RemovesAndDeletesAnItem) {
    CMArchiveItemListWrapper items;
    CMArchiveItem *const first = item();
    CMArchiveItem *const second = item();
    items.addTail(first);
    items.addTail(second);
    items.removeAndMemoryDelete(first);
    EXPECT_THAT(items.list(), ElementsAre(second));
}

TEST(ArchiveItemListWrapper, DeletesAnItemThatIsNotOnTheListToo) {
    CMArchiveItemListWrapper items;
    items.removeAndMemoryDelete(item());
    EXPECT_TRUE(items.list().IsEmpty());
}

TEST(ArchiveItemListWrapper, IgnoresNull) {
    CMArchiveItemListWrapper items;
    CMArchiveItem *const first = item();
    items.addTail(first);
    items.removeAndMemoryDelete(nullptr);
    EXPECT_THAT(items.list(), ElementsAre(first));
}

} // namespace
