// CMOperation and its abstract children: one verb each, made on the stack for one call, without data.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CList.h"
#include "CM/platform/CString.h"

/// The units of one call. They belong to the host; the list may be pruned and refilled by an operation.
using CMUnitList = CList<IUnit *, IUnit *>;

class CMOperation {
  public:
    CMOperation() = default;
    CMOperation(const CMOperation &) = delete;
    CMOperation &operator=(const CMOperation &) = delete;

    /// Whether a command tool is configured for `object` (null for the default). 1 if so, or if the provider route
    /// is configured and `hybrid` is true. `message` is emptied on a tool, set on "None", else left alone.
    virtual int isCMTool(CString &message, IDObject *object, bool hybrid);

  protected:
    ~CMOperation() = default;
};

class CMWorkspaceOperation : public CMOperation {
  public:
    /// Runs the operation; non-zero if the last unit worked on succeeded. `hybrid` is true when a provider-route
    /// configuration is sent down the command route.
    virtual int operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags, bool hybrid) = 0;

  protected:
    ~CMWorkspaceOperation() = default;
};

class CMArchiveOperation : public CMOperation {
  public:
    virtual int operator()(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);

  protected:
    ~CMArchiveOperation() = default;
};

/// An extension point: nothing derives from it yet.
class CMFreeTextOperation : public CMOperation {
  public:
    virtual int operator()(CMUnitList &units, CMDiagnosticList &diags);

  protected:
    ~CMFreeTextOperation() = default;
};
