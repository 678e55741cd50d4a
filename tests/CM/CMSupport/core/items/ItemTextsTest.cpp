#include "CM/CMSupport/core/ItemTexts.h"

#include "CM/CMSupport/core/CMArchiveItem.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

TEST(ItemTexts, KeepsManyTextsOfAllSizesAfterItIsGone) {
    std::vector<std::pair<std::shared_ptr<const char>, std::string>> kept;
    {
        ItemTexts texts;
        for (std::size_t size = 0; size < 3000; ++size) {
            const std::string text(size * 13 % 40'000, static_cast<char>('a' + size % 26));
            kept.emplace_back(texts.keep({text, "", "end"}), text + "end");
        }
    }
    for (const auto &[text, expected] : kept) {
        EXPECT_EQ(std::string_view(text.get(), expected.size()), expected);
    }
}

TEST(ItemTexts, OfAnItemStayWhenItsStatusIsSetAndInItsCopies) {
    ItemTexts texts;
    CMArchiveItem item(
        {.fileNameWithPath = "sub/A.ocl", .version = "1.7", .mode = CMArchiveItem::readOnly, .locker = "bob"},
        texts);
    const CMArchiveItem other(
        {.fileNameWithPath = "B.ocl", .version = "", .mode = CMArchiveItem::unknown, .locker = ""}, texts);
    const CMArchiveItem copy(item);
    item.setStatus("a status");
    item.setStatus("another");
    EXPECT_EQ(item.getFileNameWithPath(), "sub/A.ocl");
    EXPECT_EQ(item.getVersion(), "1.7");
    EXPECT_EQ(item.getLocker(), "bob");
    EXPECT_EQ(item.getStatus(), "another");
    EXPECT_EQ(copy.getStatus(), "");
    EXPECT_EQ(copy.getLocker(), "bob");
    EXPECT_EQ(other.getFileNameWithPath(), "B.ocl");
    EXPECT_EQ(other.getLocker(), "");
}
