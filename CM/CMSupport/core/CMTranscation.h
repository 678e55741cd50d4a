// Guards one CM operation, as an object on the caller's stack. The guard makes the operation one undoable step,
// shows the CM output window, writes separator lines around the operation's output, reports whether the operation
// may run, and removes the units on which it is not allowed from the list. Transactions nest.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/core/CMTranscationType.h"
#include "CM/platform/CList.h"
#include "CM/platform/CString.h"

class AbstractPackedViewParams;

/// Records which messages have been shown, so that each appears only once per outermost operation.
struct CMTxnGlobalState {
    int barredUnitsShown = 0;    ///< the summary message of checkUnitsForOperation
    int controlledFileShown = 0; ///< the message about checking out a controlled file
    void reset() { *this = CMTxnGlobalState(); }
};

class CMTranscation {
  public:
    /// Opens the transaction: an undo step (with `viewParams` and `flag`; not for type CMTxnTool), the output
    /// window, the start separator. Callers pass null and 1. An empty `name` means the display name of the type.
    /// If the host throws, the transaction is not open and its undo step is ended.
    CMTranscation(AbstractPackedViewParams *viewParams, int flag, CMTranscationType type, const CString &name);
    /// Ends the undo step and writes the end separator, each even if the host throws in the other. Doesn't roll
    /// anything back.
    ~CMTranscation();
    CMTranscation(const CMTranscation &) = delete;
    CMTranscation &operator=(const CMTranscation &) = delete;

    /// Returns whether an operation may run: there is an active project, and its tool is not "None" (if it is,
    /// shows a message). On the provider route the tool is not checked.
    [[nodiscard]] bool isValidTranscation() const;

    /// Removes from the list the units on which the current operation is not allowed: stubs and references, unless
    /// the project's properties or the type of the operation allow them. Writes a line for each to the CM output
    /// window, and shows one message box saying that some were left out. Null entries and elements without a file
    /// of their own stay. Without an open transaction or an active project the list is unchanged.
    static void checkUnitsForOperation(CMUnitList &units);

    /// Returns the newest open transaction, or null.
    [[nodiscard]] static CMTranscation *getCurTranscation();

    [[nodiscard]] CMTranscationType getTranscationType() const { return type_; }
    /// Returns the name given at construction, or the display name of the type.
    [[nodiscard]] CString getOperationName() const;
    /// Returns the display name of a type; for a number outside the enumeration, that of CMTxnTool.
    [[nodiscard]] static CString getOperationNameFromType(CMTranscationType type);

  private:
    enum class Verdict { stays, staysAsControlledFile, barredAsStub, barredAsReference };
    /// Keeps a transaction on m_TxnList.
    class Entry {
      public:
        explicit Entry(CMTranscation *transaction);
        ~Entry();
        Entry(const Entry &) = delete;
        Entry &operator=(const Entry &) = delete;

      private:
        CMTranscation *transaction_;
    };
    struct Permissions {
        bool stubs;
        bool references;
    };

    void startUndoStep(AbstractPackedViewParams *viewParams, int flag) const;
    void endUndoStep() const;
    void showOutPutWindow() const;
    void markStartTranscation() const;
    void markEndTranscation() const;
    void writeSeparator(const CString &key) const;
    void expandKeyWords(CString &text) const;
    [[nodiscard]] Verdict judge(const IUnit &unit, const Permissions &allowed) const;
    static void reportControlledFile(const CString &file);
    static void reportLeftOutUnits();

    static CList<CMTranscation *, CMTranscation *> m_TxnList;
    static CMTxnGlobalState myGlobalState;

    CString name_;
    CMTranscationType type_ = CMTxnTool;
    Entry entry_; ///< leaves the list after the body of the destructor
};
