// Patterns that were compiled are kept, so that each is compiled once however often it is used.
#pragma once

#include "orchard/text/CompiledPattern.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orchard {

/// Holds a bounded number of patterns. One thread uses it.
class PatternCache {
  public:
    /// At most twice `generation` patterns are held. Those used longest ago go first, many at a time.
    explicit PatternCache(std::size_t generation = 256) : generation_(generation) {}

    /// The compiled pattern, taken from the cache if it is there.
    std::shared_ptr<const CompiledPattern> get(std::string_view pattern, std::string_view flags);

    [[nodiscard]] std::size_t count() const { return recent_.size() + older_.size(); }
    /// The cache of the calling thread.
    static PatternCache &ofThisThread();

  private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept {
            return std::hash<std::string_view>()(text);
        }
    };
    using Patterns =
        std::unordered_map<std::string, std::shared_ptr<const CompiledPattern>, Hash, std::equal_to<>>;

    std::size_t generation_;
    std::string key_; ///< kept between calls for its memory
    Patterns recent_;
    Patterns older_;
};

} // namespace orchard
