// Declares the base classes of the operations. An operation object has no data and is created on the stack for one
// call.
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CList.h"
#include "CM/platform/CString.h"

/// The units of one call. The host owns them; an operation may remove entries and refill the list.
using CMUnitList = CList<IUnit *, IUnit *>;

class CMOperation {
  public:
    CMOperation() = default;
    CMOperation(const CMOperation &) = delete;
    CMOperation &operator=(const CMOperation &) = delete;

    /// Returns 1 if a command tool is configured for `object` (null for the default), or if the provider route was
    /// chosen and `hybrid` is true; else 0. Clears `message` if there is a tool, sets it if the tool is "None",
    /// and otherwise leaves it unchanged.
    virtual int isCMTool(CString &message, IDObject *object, bool hybrid);

  protected:
    ~CMOperation() = default;
};

class CMWorkspaceOperation : public CMOperation {
  public:
    /// Runs the operation. Returns non-zero if the command of the last unit was run, even if the tool failed.
    /// `hybrid` is true if a project on the provider route uses a command for this operation.
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

/// An extension point; no class derives from it yet.
class CMFreeTextOperation : public CMOperation {
  public:
    virtual int operator()(CMUnitList &units, CMDiagnosticList &diags);

  protected:
    ~CMFreeTextOperation() = default;
};
