#include "apps/orchard-cm/toolcheck/SamplePlaces.h"

#include "CM/CMSupport/command/PathPlaceholders.h"
#include "CM/CMSupport/core/PropertyKeys.h"

#include <filesystem>
#include <string>

namespace orchard_cm {

namespace fs = std::filesystem;

CString withPlaces(CString text, std::string_view key, const CString &renameTemplate, const IUnit &unit) {
    const fs::path file = unit.getFullFileName().str();
    const fs::path own = file.parent_path();
    const fs::path outer = own.parent_path();
    if (key == keys::move || key == keys::moveDirectory) {
        const std::string from = (unit.getPersistAs().IsEmpty() ? own : outer).string();
        command::fillInMove(text, {from, from + "/elsewhere"}, unit, {.asDirectory = key == keys::moveDirectory});
    } else if (key == keys::rename) {
        command::fillInRename(text, file.string(), (own / "New").string() + file.extension().string());
    } else if (key == keys::renameDirectory) {
        command::fillInRenameDirectory(text, renameTemplate, {own.string(), (outer / "New").string()});
    }
    return text;
}

} // namespace orchard_cm
