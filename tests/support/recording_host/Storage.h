// Allocates the memory of the recording host's objects. No address is used twice unless a test asks for it,
// whatever the allocator does, and a sanitizer reports each use of an object that was deleted.
#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>

namespace recording {

class Storage {
  public:
    Storage() = default;
    Storage(const Storage &) = delete;
    Storage &operator=(const Storage &) = delete;

    /// Returns memory for an object of `size` bytes: that of the object that was at nextAddress, else memory that
    /// was never used. Throws std::logic_error if nextAddress is not free or has another size.
    void *take(std::size_t size);
    /// Accepts memory that take() returned. It stays allocated.
    void giveBack(const void *place);

    /// The address of the next object only: that of a removed object of the same kind.
    const void *nextAddress = nullptr;

  private:
    struct Block {
        std::unique_ptr<std::byte[]> bytes;
        std::size_t size = 0;
        bool isFree = false;
    };
    std::unordered_map<const void *, Block> blocks_;
};

/// Destroys an object that was made in a storage.
struct EndsObject {
    Storage *storage = nullptr;
    template <class OBJECT> void operator()(OBJECT *object) const {
        const void *const place = dynamic_cast<const void *>(object);
        std::destroy_at(object);
        storage->giveBack(place);
    }
};

} // namespace recording
