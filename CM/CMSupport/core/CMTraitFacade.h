// Provides services that are not operations to the host, through theCMFacade: the default header, the refresh of
// unit states after a project was opened, and the values in a unit's header.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/host/IBaseCMFacade.h"
#include "CM/platform/CString.h"

class IUnit;

class ORC_CM_API CMTraitFacade : public IBaseCMFacade {
  public:
    CMTraitFacade() = default;
    ~CMTraitFacade() override;

    /// Returns getDefaultHeader().
    [[nodiscard]] CString getTheDefaultHeader() override;
    /// Queries the provider for the states of all units if the project uses one, states are shown, and the tool's
    /// property "RefreshCMStatusAtProjectOpenup" says so or the user agrees. The host calls it after opening a
    /// project.
    void RefreshCMStatus() override;

    /// Returns the text of the tool's default header file, up to its first byte 255; empty without such a file, or
    /// if it can't be read.
    [[nodiscard]] static CString getDefaultHeader();
    /// Return what the tool's patterns find in the unit's header: the user who holds its lock, and its version.
    /// Empty if there is no header or the pattern doesn't match (see the debug trace). The unit must not be null.
    [[nodiscard]] static CString getLocker(const IUnit *unit);
    [[nodiscard]] static CString getVersion(const IUnit *unit);
};

/// The only object of this class, which exists as long as the library is loaded.
extern ORC_CM_API CMTraitFacade theCMFacade;
