// CMTraitFacade: the services behind theCMFacade, through which the host gets what is no operation: the default
// header, the refresh of states when a project was opened, and what a unit's header says.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/host/IBaseCMFacade.h"
#include "CM/platform/CString.h"

class IUnit;

class ORC_CM_API CMTraitFacade : public IBaseCMFacade {
  public:
    CMTraitFacade() = default;
    ~CMTraitFacade() override;

    /// What getDefaultHeader gives.
    [[nodiscard]] CString getTheDefaultHeader() override;
    /// To be called when a project was opened: asks the provider for the state of all units, if the project works
    /// through one, shows states, and the tool's property "RefreshCMStatusAtProjectOpenup" or the user agrees.
    void RefreshCMStatus() override;

    /// The text of the tool's default header file, up to its first byte 255; empty without one, or if it can't be
    /// read.
    [[nodiscard]] static CString getDefaultHeader();
    /// What the unit's header says according to the tool's patterns: who has the unit locked, and its version.
    /// Empty without a header, or if it doesn't match; the debug trace says so. The unit must not be null.
    [[nodiscard]] static CString getLocker(const IUnit *unit);
    [[nodiscard]] static CString getVersion(const IUnit *unit);
};

/// The one object of this class, there from the start of the library to its end.
extern ORC_CM_API CMTraitFacade theCMFacade;
