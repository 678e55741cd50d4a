// Reads the header of a file of any bytes. The beginning of the file gives the same result as the complete file,
// or is reported as too short, and the result equals that of the reader for complete files.
#include "orchard/storage/UnitHeader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using orchard::HeaderScan;
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const HeaderScan whole = orchard::scanHeader(text, true);
    if (whole.state == HeaderScan::tooFew) {
        std::abort();
    }
    if (whole.state == HeaderScan::foreign ? *whole.fault == '\0' : whole.text != orchard::findHeader(text).text) {
        std::abort();
    }
    bool isReported = false;
    const std::size_t step = std::max<std::size_t>(1, size / 64);
    for (std::size_t length = 0; length <= size; length += step) {
        const HeaderScan part = orchard::scanHeader(text.substr(0, length), false);
        if (part.state == HeaderScan::tooFew) {
            if (isReported) {
                std::abort(); // a longer part found less
            }
            continue;
        }
        isReported = true;
        if (part.state != whole.state || part.text != whole.text) {
            std::abort();
        }
    }
    return 0;
}
