// The registry file, from any bytes: whatever is read can be asked for, and every report names its place.
#include "CM/platform/Registry.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const auto registry = platform::Registry::parse(text, "fuzz.reg", [](const CString &line) {
        if (line.Find("fuzz.reg:") != 0) {
            std::abort();
        }
    });
    const CString key("HKEY_LOCAL_MACHINE\\Software\\Maker");
    for (const CString &name : registry.valueNames(key)) {
        if (!registry.hasKey(key) || !registry.value(key, name)) {
            std::abort();
        }
    }
    return 0;
}
