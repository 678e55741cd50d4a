// The host's icons, known by their names, in the order of their indices.
#pragma once

namespace orchard {

enum class Icon {
    project,
    subsystem,
    classUnit,
    unitOverlay, ///< drawn over a unit's icon: getOverlayImage answers with its place
    component,
    configuration,
    file,
    embeddedFile,
    fragment,
    workspace,
    otherUnit,
    element,
    modifiedOverlay, ///< the same for a unit with changes
};

} // namespace orchard
