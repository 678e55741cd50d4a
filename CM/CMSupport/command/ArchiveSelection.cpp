#include "CM/CMSupport/command/ArchiveSelection.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMProperty.h"

namespace command {

namespace {
constexpr int oneArchiveForTheProject = 2;
} // namespace

void selectArchive(const IUnit &unit) {
    if (CMArchive::getArchiveSelection() != oneArchiveForTheProject) {
        CString archive;
        CMProperty::getBatchArchiveRecursive(&unit, archive);
        CMArchive::setMainArchive(archive); // also with an empty text, when the unit has no archive
    }
}

} // namespace command
