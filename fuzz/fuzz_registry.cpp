// Reads a registry file of any bytes: every value that is read can be looked up, and every report names its
// position.
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
    for (const CString &name : registry.textNames(key)) {
        if (!registry.text(key, name)) {
            std::abort();
        }
    }
    return 0;
}
