#include "apps/orchard-cm/toolcheck/SamplePlaces.h"

#include <filesystem>
#include <string>

namespace orchard_cm {

namespace {

namespace fs = std::filesystem;

/// "$oldName" and "$newName" of a unit that moves as a file hold its directory setting, also if that is empty.
void fillInMove(CString &text, const IUnit &unit, bool asDirectory) {
    const fs::path own = fs::path(unit.getFullFileName().str()).parent_path();
    const std::string setting = unit.getPersistAs().str();
    const std::string from = (setting.empty() ? own : own.parent_path()).string();
    const std::string to = from + "/elsewhere";
    const std::string name = "/" + setting + (asDirectory ? "" : "/" + unit.getFileName().str());
    text.Replace("$olddir", from);
    text.Replace("$newdir", to);
    text.Replace("$oldName", from + name);
    text.Replace("$newName", to + name);
}

void fillInRename(CString &text, const IUnit &unit) {
    const fs::path from = unit.getFullFileName().str();
    const std::string directory = from.parent_path().string();
    text.Replace("$dir", directory);
    text.Replace("$olddir", directory);
    text.Replace("$newdir", directory);
    text.Replace("$oldName", from.string());
    text.Replace("$newName", directory + "/New" + from.extension().string());
}

void fillInRenameDirectory(CString &text, const CString &renameTemplate, const IUnit &unit) {
    const fs::path from = fs::path(unit.getFullFileName().str()).parent_path();
    const std::string outer = from.parent_path().string();
    if (renameTemplate.Find("$olddir") >= 0 || renameTemplate.Find("$dir") >= 0) {
        text.Replace("$dir", outer);
        text.Replace("$oldDir", outer);
    }
    if (renameTemplate.Find("$newdir") >= 0) {
        text.Replace("$newdir", outer);
    }
    text.Replace("$oldName", from.string());
    text.Replace("$newName", outer + "/New");
}

} // namespace

CString withPlaces(CString text, std::string_view key, const CString &renameTemplate, const IUnit &unit) {
    if (key == "Move" || key == "MoveDirectory") {
        fillInMove(text, unit, key == "MoveDirectory");
    } else if (key == "Rename") {
        fillInRename(text, unit);
    } else if (key == "RenameDirectory") {
        fillInRenameDirectory(text, renameTemplate, unit);
    }
    return text;
}

} // namespace orchard_cm
