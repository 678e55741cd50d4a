#include "orchard/text/PatternCache.h"

#include <utility>

namespace orchard {

std::shared_ptr<const CompiledPattern> PatternCache::get(std::string_view pattern, std::string_view flags) {
    key_.assign(flags);
    key_ += '/';
    key_ += pattern;
    if (const auto found = recent_.find(std::string_view(key_)); found != recent_.end()) {
        return found->second;
    }
    std::shared_ptr<const CompiledPattern> compiled;
    if (const auto found = older_.find(std::string_view(key_)); found != older_.end()) {
        compiled = std::move(found->second);
        older_.erase(found);
    } else {
        // A report about the pattern may call this function again, so don't use the key after this line.
        std::string key = key_;
        compiled = std::make_shared<const CompiledPattern>(pattern, flags);
        key_ = std::move(key);
    }
    if (recent_.size() >= generation_) {
        older_ = std::exchange(recent_, {});
    }
    recent_.emplace(key_, compiled);
    return compiled;
}

PatternCache &PatternCache::ofThisThread() {
    thread_local PatternCache cache;
    return cache;
}

} // namespace orchard
