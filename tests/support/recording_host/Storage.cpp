#include "tests/support/recording_host/Storage.h"

#include <sanitizer/asan_interface.h>

#include <stdexcept>
#include <utility>

namespace recording {

void *Storage::take(std::size_t size) {
    if (nextAddress == nullptr) {
        auto bytes = std::make_unique<std::byte[]>(size);
        std::byte *const place = bytes.get();
        blocks_.try_emplace(place, Block{std::move(bytes), size});
        return place;
    }
    const auto found = blocks_.find(std::exchange(nextAddress, nullptr));
    if (found == blocks_.end() || !found->second.isFree || found->second.size != size) {
        throw std::logic_error("no object of this kind was removed from the address");
    }
    Block &block = found->second;
    block.isFree = false;
    ASAN_UNPOISON_MEMORY_REGION(block.bytes.get(), block.size);
    return block.bytes.get();
}

void Storage::giveBack(const void *place) {
    Block &block = blocks_.at(place);
    block.isFree = true;
    ASAN_POISON_MEMORY_REGION(block.bytes.get(), block.size);
}

} // namespace recording
