// Collects the outcome of one item while an operation works on it. Without an observer it reads no file and sends
// nothing.
#pragma once

#include "CM/CMSupport/core/CMOutcome.h"
#include "CM/CMSupport/core/FileSnapshot.h"
#include "CM/CMSupport/resources/Texts.h"

class OutcomeReport {
  public:
    /// Starts a report about a directory, or about the whole call if `directory` is empty.
    explicit OutcomeReport(const CString &directory = {});
    explicit OutcomeReport(IUnit &unit);
    explicit OutcomeReport(CMArchiveItem &item);
    /// Starts a report about a unit that may have been deleted.
    static OutcomeReport ofDeadUnit(IUnit *unit);

    /// Returns whether the observer lets the item begin; true without an observer. If not, the report is not sent.
    [[nodiscard]] bool mayBegin() const;
    /// Records the key of the command's template.
    void uses(const CString &property) { outcome_.property = property; }
    /// Records why the item was not done. Only the first reason counts, because later ones result from it.
    void fail(CMOutcome::Kind kind, const CString &reason);
    void fail(CMOutcome::Kind kind, resources::Text reason);
    /// Records that the tool has no template with this key.
    void lacksCommand(const CString &key);
    /// Records that a variable of the template has no value.
    void lacksValue(const CString &key, const CString &variable);
    /// Adds a run. A faulty run makes the item failed.
    void ran(CMToolRun run);
    /// Sets the output of the last run, unless it is already set.
    void printed(CString output);
    /// Records a reload; `now` is the unit that it returned.
    void reloaded(CMOutcome::Reload how, IUnit *now);
    /// Records that the file could not be read, so the unit's contents in the model are unknown.
    void notLoaded(const CString &reason);

    [[nodiscard]] const CString &property() const { return outcome_.property; }
    [[nodiscard]] bool hasFailed() const { return outcome_.kind != CMOutcome::Kind::done; }
    [[nodiscard]] const CString &reason() const { return outcome_.reason; }
    /// Sends the outcome to the observer; the last call on the object.
    void send();
    /// Sends the outcome with a kind that needs no reason.
    void sendAs(CMOutcome::Kind kind);

  private:
    [[nodiscard]] CString fileNow() const;

    CMOutcome outcome_;
    FileSnapshot before_;
};
