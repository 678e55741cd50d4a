// CMFacade: where a call enters the library. Operations take the caller's lists and return the outcome of the last
// unit or item that was worked on, not a summary: non-zero if it succeeded. They return 0 too if nothing was left
// to do, without a message, and if the transaction was not valid: without a tool the user has been told so,
// without an active project nothing is shown. What went wrong for which unit is told in the diagnostic list and in
// the CM output window.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/CMSupport/core/CMArchiveItem.h"
#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMDiagnostic.h"
#include "CM/CMSupport/core/CMOperation.h"

#include <ostream>

class CMainFrame;

class ORC_CM_API CMFacade {
  public:
    CMFacade() = delete;

    using SaveCallback = void (*)();
    using ATMCallback = void (*)(CMainFrame *);

    // Set by the host at its start, read by the operations. The save callback may stay null; the two others must
    // be set before the first check out.
    static SaveCallback &saveCallbackFunc();
    static ATMCallback &ATMCallbackFunc();
    static CMainFrame *&ATMCallbackFuncParameter();
    static ATMCallback &afterATMCallbackFunc();
    static CMainFrame *&afterATMCallbackFuncParameter();
    /// The stream of the host's CM output window.
    static std::ostream *&outStream();

    // Operations. Units that may not be worked on are taken off the unit list first.
    static int CheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int RecCheckOut(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags);
    static int CheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);
    static int RecCheckOutFromArchive(CMArchiveItemList &items, CMArgumentList &args, CMDiagnosticList &diags);

    /// Does nothing; an entry point for the host.
    static void DoCmDialog();
    /// Makes the list unique, keeping the first occurrence of each unit and the order, and drops null entries.
    static void removeDuplicatesFromItemList(CMUnitList &units);

  private:
    static SaveCallback _saveCallbackFunc;
    static ATMCallback _ATMCallbackFunc;
    static CMainFrame *_ATMCallbackFuncParameter;
    static ATMCallback _afterATMCallbackFunc;
    static CMainFrame *_afterATMCallbackFuncParameter;
    static std::ostream *_outStream; // reserved: outStream() gives the stream of the main CMOutputer
};

/// The index of the overlay that the host's browser draws over a unit's icon.
ORC_CM_API int getOverlayImage(const IUnit *unit);
/// Whether a dialog should offer to include the information files that go with the unit, or with any of them.
ORC_CM_API bool shouldSetInformationFilesCheckBox(IUnit *unit);
ORC_CM_API bool shouldSetInformationFilesCheckBoxForUnitsList(CMArchiveItemList &items);
ORC_CM_API bool shouldSetInformationFilesCheckBoxForUnitsList2(CMUnitList &units);
