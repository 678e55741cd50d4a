// Reads property sets: a set with a mistake gives one message that names the file, and every property of a valid
// set is found.
#include "orchard/properties/PropertySet.h"
#include "orchard/properties/PropertyTable.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(bytes), size);
    std::string problem;
    const auto set = orchard::PropertySet::parse(text, "set.toml", problem);
    if (set == nullptr) {
        if (!problem.starts_with("set.toml:")) {
            std::abort();
        }
        return 0;
    }
    for (const auto &entry : set->table().entries()) {
        const CString name = entry.property->getName();
        if (!problem.empty() || set->table().find(entry.subject, entry.metaclass, name) != entry.property.get() ||
            entry.property->getValue().view().find('\0') != std::string_view::npos) {
            std::abort();
        }
    }
    return 0;
}
