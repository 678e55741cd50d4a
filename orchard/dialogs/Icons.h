// Names the host's icons, in the order of their indices.
#pragma once

namespace orchard {

enum class Icon {
    project,
    subsystem,
    classUnit,
    unitOverlay, ///< drawn over a unit's icon; getOverlayImage returns its index
    component,
    configuration,
    file,
    embeddedFile,
    fragment,
    workspace,
    otherUnit,
    element,
    modifiedOverlay, ///< likewise, for a unit with changes
};

} // namespace orchard
