// Tells texts apart, quickly; no guard against texts that are made to be taken for each other.
#pragma once

#include <cstdint>
#include <string_view>

namespace orchard {

[[nodiscard]] std::uint64_t hashOfText(std::string_view text);

} // namespace orchard
