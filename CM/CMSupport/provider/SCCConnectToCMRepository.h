// SCCConnectToCMRepository: opens provider projects and hands out their contexts. All functions are for the
// user-interface thread. If the provider crashes, getSccContext and contextFor show a message; all others let a
// CMProviderFault pass through.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/CMSupport/provider/pvContextStruct.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"

class SCCConnectToCMRepository {
  public:
    SCCConnectToCMRepository() = default;
    virtual ~SCCConnectToCMRepository() = default;
    SCCConnectToCMRepository(const SCCConnectToCMRepository &) = delete;
    SCCConnectToCMRepository &operator=(const SCCConnectToCMRepository &) = delete;

    /// Connects the project, as the user asked: keeps the association of the first unit (or of the project) unless
    /// the user agrees to give it up; else lets the user choose a project in the provider's dialog and stores the
    /// choice. Returns 1 if the connection can be used, otherwise 0, after showing the failure. The other lists
    /// are not used.
    virtual int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// Assigns the context of the unit, or of the active project for null, and opens its provider project if it is
    /// not open. Callers test `context`, not the result, as required. It is null without a project, and without an
    /// association, which is shown to the user. If the project can't be opened, or the provider crashes, the user
    /// sees a message and `context` is the record as far as it got, which may be outside the list.
    virtual int getSccContext(pvContextStruct *&context, IUnit *unit);

    /// Opens a provider project whose name is known, without asking the user. For a null `context`, appends a new
    /// record to the list. `unit` is not used. Returns 1. On failure, which is shown to the user, removes the last
    /// record from the list, leaves `context` as it is and returns 0. Without an active project, only returns 0.
    int connectLazy(IUnit *unit, pvContextStruct *&context, CString &projName, CString &auxPath);
    /// Lets the user choose a project in the provider's dialog, and opens it. `projName` and `auxPath` are
    /// proposals on entry and the choice on return. A non-zero `isNew` allows a new project and, once there has
    /// been a connection, closes all contexts of a provider that isn't reentrant. `unit` is not used. Returns and
    /// fails as connectLazy does.
    int connectIt(IUnit *unit, pvContextStruct *&context, CString &projName, CString &auxPath, int isNew);
};

namespace provider {

/// Returns the context that getSccContext assigns. Adds the calls that it makes to the report, and the reason if
/// there is no usable context.
[[nodiscard]] pvContextStruct *contextFor(IUnit *unit, OutcomeReport &report);

} // namespace provider
