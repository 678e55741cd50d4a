#include "orchard/storage/DiskStorage.h"

#include "orchard/model/Paths.h"
#include "orchard/storage/AtomicFile.h"
#include "orchard/storage/DefaultHeader.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/UnitHeader.h"
#include "orchard/storage/UnitWriter.h"

#include <filesystem>
#include <system_error>

namespace orchard {

bool DiskStorage::save(UnitElement &unit, const std::string &path, std::string &error) {
    if (isWriteProtected(path)) {
        error = "the file is read-only; check the unit out with a lock first";
        return false;
    }
    const bool own = path == unit.fullFileName();
    FileText present;
    const bool there = present.read(path) == FileRead::done;
    if (own && there && unit.bodyHash() != 0 && bodyHashOf(present.text) != unit.bodyHash()) {
        error = "the file was changed by another program since it was read; reload the unit, or save it to "
                "another file";
        return false;
    }
    // The tool may have written to the header since the unit was read.
    std::string header(there ? findHeader(present.text).text : std::string_view());
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
    if (own && !there) {
        std::error_code ignored; // the writing tells of it
        std::filesystem::create_directories(directoryOfPath(path), ignored);
    }
    error = writeWholeFile(path, text);
    if (error.empty() && own) {
        unit.setBodyHash(bodyHashOf(text));
    }
    return error.empty();
}

std::optional<std::string> DiskStorage::readHeader(const std::string &path) { return readHeaderOf(path); }

} // namespace orchard
