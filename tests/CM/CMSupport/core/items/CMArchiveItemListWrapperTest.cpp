#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/ItemTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

using testing::ElementsAre;

namespace {

class ArchiveItemListWrapper : public testing::Test {
  protected:
    CMArchiveItem *item() {
        return new CMArchiveItem(
            {.fileNameWithPath = "Pump.ocl", .version = "1.1", .mode = CMArchiveItem::unknown, .locker = ""},
            texts_);
    }
    /// How many items exist: each holds the block of texts, as `texts_` and `watch_` do.
    [[nodiscard]] long living() const { return watch_.use_count() - 2; }

  private:
    ItemTexts texts_;
    std::shared_ptr<const char> watch_ = texts_.keep({"watch"});
};

TEST_F(ArchiveItemListWrapper, OwnsItsItems) {
    {
        CMArchiveItemListWrapper items;
        CMArchiveItem *const first = item();
        CMArchiveItem *const second = item();
        items.addTail(first);
        items.addTail(second);
        EXPECT_THAT(items.list(), ElementsAre(first, second));
        EXPECT_EQ(living(), 2);
    }
    EXPECT_EQ(living(), 0);
}

TEST_F(ArchiveItemListWrapper, RemovesAndDeletesAnItem) {
    CMArchiveItemListWrapper items;
    CMArchiveItem *const first = item();
    CMArchiveItem *const second = item();
    items.addTail(first);
    items.addTail(second);
    items.removeAndMemoryDelete(first);
    EXPECT_THAT(items.list(), ElementsAre(second));
    EXPECT_EQ(living(), 1);
}

TEST_F(ArchiveItemListWrapper, DeletesAnItemThatIsNotOnTheListToo) {
    CMArchiveItemListWrapper items;
    CMArchiveItem *const listed = item();
    items.addTail(listed);
    items.removeAndMemoryDelete(item());
    EXPECT_THAT(items.list(), ElementsAre(listed));
    EXPECT_EQ(living(), 1);
}

TEST_F(ArchiveItemListWrapper, IgnoresNull) {
    CMArchiveItemListWrapper items;
    CMArchiveItem *const first = item();
    items.addTail(first);
    items.removeAndMemoryDelete(nullptr);
    EXPECT_THAT(items.list(), ElementsAre(first));
    EXPECT_EQ(living(), 1);
}

} // namespace
