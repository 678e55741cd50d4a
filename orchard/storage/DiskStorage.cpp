#include "orchard/storage/DiskStorage.h"

#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"
#include "CM/platform/AtomicFile.h"
#include "CM/platform/Files.h"
#include "orchard/model/Paths.h"
#include "orchard/storage/DefaultHeader.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/HeaderFile.h"
#include "orchard/storage/UnitHeader.h"
#include "orchard/storage/UnitWriter.h"

#include <filesystem>
#include <system_error>

namespace orchard {

namespace {

/// Why the unit can't be written over the file; empty if it can. `present` receives the file's text, which is
/// empty if there is no file.
std::string faultOfWriting(const UnitElement &unit, const std::string &path, FileText &present) {
    if (isWriteProtected(path)) {
        return "the file is read-only; check the unit out with a lock first";
    }
    if (present.read(path) != FileRead::done) {
        present.text.clear();
        return {};
    }
    const bool own = unit.bodyHash() != 0 && path == unit.fullFileName();
    if (own && bodyHashOf(present.text) != unit.bodyHash()) {
        return "the file was changed by another program since it was read; reload the unit, or save it to another "
               "file";
    }
    return {};
}

} // namespace

bool isWriteProtected(const std::string &path) {
    return platform::fileExists(path) && !platform::hasWritePermission(path);
}

std::string faultOfSaving(const UnitElement &unit) {
    if (unit.isRecursive(UnitElement::reference)) {
        return "it belongs to another project";
    }
    if (unit.is(UnitElement::stub)) {
        return "it isn't loaded";
    }
    FileText present;
    return faultOfWriting(unit, unit.fullFileName(), present);
}

std::string headerToWrite(const UnitElement &unit, std::string_view present) {
    // The tool may have written to the header since the unit was read.
    std::string header(findHeader(present).text);
    if (header.empty()) {
        header = unit.header();
    }
    return header.empty() ? defaultHeaderOf(unit) : header;
}

bool saveOwnFile(UnitElement &unit, Problems &problems) {
    const std::string path = unit.fullFileName();
    std::string error;
    if (!unit.model()->storage().save(unit, path, error)) {
        problems.push_back({path, 0, 0, "the unit '" + unit.name() + "' could not be saved: " + error});
        return false;
    }
    unit.noteSaved();
    return true;
}

bool DiskStorage::save(UnitElement &unit, const std::string &path, std::string &error) {
    const bool own = path == unit.fullFileName();
    FileText present;
    error = faultOfWriting(unit, path, present);
    if (!error.empty()) {
        return false;
    }
    std::string text;
    if (!writeUnit(unit, headerToWrite(unit, present.text), text, error)) {
        return false;
    }
    if (own && present.text.empty()) {
        std::error_code ignored; // if this fails, the writing reports it
        std::filesystem::create_directories(directoryOfPath(path), ignored);
    }
    error = platform::writeWholeFile(path, text);
    if (error.empty() && own) {
        unit.setBodyHash(bodyHashOf(text));
    }
    return error.empty();
}

bool DiskStorage::readHeader(const UnitElement &unit, std::string &header, bool quietly) {
    const std::string path = unit.fullFileName();
    HeaderRead read = unit.kind() == Kind::embedded ? readFirstLinesOf(path) : readHeaderOf(path);
    if (read.fault.empty()) {
        header = std::move(read.text);
        const std::lock_guard lock(mutex_);
        reportedFiles_.erase(path);
        return true;
    }
    const auto isNew = [&] {
        const std::lock_guard lock(mutex_);
        return reportedFiles_.insert(path).second;
    };
    if (!quietly && isNew()) {
        const std::string text = "The header of " + path + " could not be read again: " + read.fault +
                                 ". The version and the locker of '" + unit.name() + "' are unchanged.";
        LogTrace::Log(LogTrace::Log::cm).Min("orchard/storage", 0, text);
        notifyUser(text, messageLevelDefault);
    }
    return false;
}

} // namespace orchard
