// Declares the library's services for the host.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"

class ORC_HOST_API IBaseCMFacade {
  public:
    IBaseCMFacade();
    virtual ~IBaseCMFacade();
    IBaseCMFacade(const IBaseCMFacade &) = delete;
    IBaseCMFacade &operator=(const IBaseCMFacade &) = delete;

    /// Returns the text of the tool's default header.
    [[nodiscard]] virtual CString getTheDefaultHeader() = 0;
    /// Asks the provider for the state of all units.
    virtual void RefreshCMStatus() = 0;
};
