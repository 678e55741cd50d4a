// Reads a unit file of any bytes: it is refused with a position in the text, or its contents are the same after
// writing and reading.
#include "orchard/model/UnitElement.h"
#include "orchard/storage/UnitDocument.h"
#include "orchard/storage/UnitHeader.h"
#include "orchard/storage/UnitWriter.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

std::unique_ptr<orchard::Element> readBack(std::string_view text, bool mustSucceed) {
    orchard::UnitDocument document;
    orchard::Fault fault;
    std::vector<orchard::UnitElement *> listed;
    if (document.parse(text, fault)) {
        auto unit = orchard::makeElement(document.kind());
        if (document.fill(*unit->asUnit(), nullptr, listed, fault)) {
            return unit;
        }
    }
    if (mustSucceed || fault.text.empty() || fault.offset > text.size()) {
        std::abort();
    }
    return nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const std::string_view header = orchard::findHeader(text).text;
    const auto unit = readBack(text, false);
    if (unit == nullptr) {
        return 0;
    }
    std::string written;
    std::string again;
    std::string fault;
    if (!orchard::writeUnit(*unit->asUnit(), header, written, fault)) {
        std::abort();
    }
    const auto same = readBack(written, true);
    if (!orchard::writeUnit(*same->asUnit(), orchard::findHeader(written).text, again, fault) ||
        again != written) {
        std::abort();
    }
    return 0;
}
