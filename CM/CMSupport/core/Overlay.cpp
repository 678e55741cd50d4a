#include "CM/CMSupport/core/CMFacade.h"
#include "CM/host/IProject.h"

namespace {
// Indices into the host's list of images.
constexpr int noOverlay = 0;
constexpr int unitOverlay = 3;
constexpr int modifiedUnitOverlay = 12;
} // namespace

int getOverlayImage(const IUnit *unit) {
    if (unit == nullptr || (!unit->isSaveUnit() && dynamic_cast<const IEmbededFile *>(unit) == nullptr)) {
        return noOverlay;
    }
    return unit->isModified() ? modifiedUnitOverlay : unitOverlay;
}
