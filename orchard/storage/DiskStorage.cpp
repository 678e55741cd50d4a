#include "orchard/storage/DiskStorage.h"

#include "orchard/storage/AtomicFile.h"
#include "orchard/storage/DefaultHeader.h"
#include "orchard/storage/UnitHeader.h"
#include "orchard/storage/UnitWriter.h"

namespace orchard {

bool DiskStorage::save(const UnitElement &unit, const std::string &path, std::string &error) {
    if (isWriteProtected(path)) {
        error = "the file is read-only; check the unit out with a lock first";
        return false;
    }
    // The tool may have written to the header since the unit was read.
    std::string header = readHeaderOf(path).value_or(std::string());
    if (header.empty()) {
        header = unit.header();
    }
    if (header.empty()) {
        header = defaultHeaderOf(unit);
    }
    std::string text;
    if (!writeUnit(unit, header, text, error)) {
        return false;
    }
    error = writeWholeFile(path, text);
    return error.empty();
}

std::optional<std::string> DiskStorage::readHeader(const std::string &path) { return readHeaderOf(path); }

} // namespace orchard
