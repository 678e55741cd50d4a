// SCCConnectToCMRepository: opens provider projects and hands out their contexts. All functions are for the
// user-interface thread. Outside getSccContext and contextFor, a provider that crashes makes a CMProviderFault,
// which passes through.
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
    /// choice. Returns 1 on a usable connection, else 0; a failure is shown. The other lists are not used.
    virtual int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    /// Assigns the context of the unit, or of the active project for null, and opens its provider project if need
    /// be. Test `context`, not the result: it is null if there is no project or no association, which is shown to
    /// the user. If the project could not be opened, it is a record that has left the list, as required of callers
    /// that go on with it. Faults of the provider end here, with a message.
    virtual int getSccContext(pvContextStruct *&context, IUnit *unit);

    /// Opens a provider project whose name is known, without asking the user. A null `context` is made and stands
    /// last in the list. `unit` is not used. Returns 1; or 0, shown to the user, with the last record of the list
    /// taken off it and `context` unchanged.
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
