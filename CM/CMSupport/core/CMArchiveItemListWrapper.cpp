#include "CM/CMSupport/core/CMArchiveItem.h"

#include <memory>

CMArchiveItemListWrapper::~CMArchiveItemListWrapper() {
    for (CMArchiveItem *const item : items_) {
        const std::unique_ptr<CMArchiveItem> owned(item);
    }
}

void CMArchiveItemListWrapper::addTail(CMArchiveItem *item) { items_.AddTail(item); }

void CMArchiveItemListWrapper::removeAndMemoryDelete(CMArchiveItem *item) {
    const std::unique_ptr<CMArchiveItem> owned(item);
    if (item == nullptr) {
        return;
    }
    if (const auto position = items_.Find(item)) {
        items_.RemoveAt(position);
    }
}
