// Caches compiled patterns, so that each is compiled only once.
#pragma once

#include "orchard/text/CompiledPattern.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orchard {

/// Holds a limited number of patterns. Only one thread uses it.
class PatternCache {
  public:
    /// Holds at most 2 * `generation` patterns. Drops the least recently used ones, many at a time.
    explicit PatternCache(std::size_t generation = 256) : generation_(generation) {}

    /// Returns the compiled pattern, from the cache if possible.
    std::shared_ptr<const CompiledPattern> get(std::string_view pattern, std::string_view flags);

    [[nodiscard]] std::size_t count() const { return recent_.size() + older_.size(); }
    /// Returns the cache of the calling thread.
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
    std::string key_; ///< kept between calls to reuse its memory
    Patterns recent_;
    Patterns older_;
};

} // namespace orchard
