// CMTranscation: the guard around one CM operation, on the caller's stack. It makes the operation one undoable
// step, brings up the CM output window, frames the operation's output with separator lines, tells whether the
// operation may run, and prunes the unit list of units that are barred. Transactions nest.
#pragma once

#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/core/CMTranscationType.h"
#include "CM/platform/CList.h"
#include "CM/platform/CString.h"

class AbstractPackedViewParams;

/// What is to be shown once only during an outermost operation, however many transactions nest in it.
struct CMTxnGlobalState {
    int barredUnitsShown = 0;    ///< the summary box of checkUnitsForOperation has appeared
    int controlledFileShown = 0; ///< the message about checking out a controlled file has appeared
    void reset() { *this = CMTxnGlobalState(); }
};

class CMTranscation {
  public:
    /// Opens the transaction: an undo step (with `viewParams` and `flag`; not for type CMTxnTool), the output
    /// window, the start separator. Callers pass null and 1. With an empty `name` the display name of the type is
    /// used. If the host throws, the transaction was never open, and no undo step is left behind.
    CMTranscation(AbstractPackedViewParams *viewParams, int flag, CMTranscationType type, const CString &name);
    /// Ends the undo step and writes the end separator; a step in which the host throws is given up, the others
    /// are done. Does not roll anything back.
    ~CMTranscation();
    CMTranscation(const CMTranscation &) = delete;
    CMTranscation &operator=(const CMTranscation &) = delete;

    /// Whether an operation may run: there is an active project, and its tool is not "None", of which the user is
    /// told. With a provider the tool is not asked for.
    [[nodiscard]] bool isValidTranscation() const;

    /// Takes the units off the list on which the current transaction's operation is barred: stubs and references,
    /// unless the project's properties or the type of the operation allow them. A line for each goes to the CM
    /// output window, and one box tells that some were left out. Null entries and elements without a file of their
    /// own stay. Without an open transaction or an active project the list is left alone.
    static void checkUnitsForOperation(CMUnitList &units);

    /// The newest open transaction, or null.
    [[nodiscard]] static CMTranscation *getCurTranscation();

    [[nodiscard]] CMTranscationType getTranscationType() const { return type_; }
    /// The name given at construction, or the display name of the type.
    [[nodiscard]] CString getOperationName() const;
    /// The display name of a type; one that is none of the enumeration takes that of CMTxnTool.
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
    static void tellAboutControlledFile(const CString &file);
    static void tellThatUnitsAreLeftOut();

    static CList<CMTranscation *, CMTranscation *> m_TxnList;
    static CMTxnGlobalState myGlobalState;

    CString name_;
    CMTranscationType type_ = CMTxnTool;
    Entry entry_; ///< the last member, so that the list is left when all else has been done
};
