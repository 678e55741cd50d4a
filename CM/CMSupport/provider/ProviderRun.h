// Makes the calls of one operation, with the steps that the provider forms of the operations share. The file of an
// operation shows the order of its steps and what is special to it.
#pragma once

#include "CM/CMSupport/core/CMArgument.h"
#include "CM/CMSupport/core/CMORYHandler.h"
#include "CM/CMSupport/core/CMOperation.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/CMSupport/core/ReloadingBatch.h"
#include "CM/CMSupport/provider/ProviderCall.h"
#include "CM/CMSupport/provider/SCCdll.h"
#include "CM/CMSupport/provider/pvContextStruct.h"
#include "CM/host/IUnit.h"
#include "CM/platform/CString.h"
#include "CM/platform/CStringList.h"
#include "CM/scc/scc.h"

#include <vector>

namespace provider {

/// What SccQueryInfo answered for one file.
struct FileState {
    long result = SCC_OK;
    long bits = SCC_STATUS_NOTCONTROLLED;

    /// Returns whether the status has one of the bits, whatever the result was.
    [[nodiscard]] bool has(long mask) const { return (bits & mask) != 0; }
};

/// The files of one call, and the reports of their items, which the call completes.
struct CallFiles {
    CStringList files;
    std::vector<OutcomeReport> reports;

    void add(const CString &file, OutcomeReport report);
    /// Adds an empty place to the call, for a null entry of the caller's list.
    void addEmpty() { files.AddTail(""); }
    /// Adds the call to each report and sends it.
    void send(SccEntryBase &entry, long result);
};

class ProviderRun {
  public:
    /// Says whether the log gets a line between a call and its result.
    enum class LogsReturn { no, yes };

    /// `source` is the source path that the log lines name; a literal.
    explicit ProviderRun(const char *source, LogsReturn logsReturn = LogsReturn::yes)
        : log_(source), logsReturn_(logsReturn) {}

    [[nodiscard]] CallLog &log() { return log_; }
    [[nodiscard]] HWND window() const { return window_; }

    /// Logs "Getting SCC Context to " and the purpose, and returns what contextFor returns.
    [[nodiscard]] pvContextStruct *openContext(const CString &purpose, IUnit *unit, OutcomeReport &report);
    /// Does the same for a context that all items of a call share: a failure is reported as that of the call.
    [[nodiscard]] pvContextStruct *openSharedContext(const CString &purpose, IUnit *unit);
    /// Asks for the state of one file.
    [[nodiscard]] FileState stateOf(const CString &file, void *context);
    /// Calls an entry that takes files, with the log lines around the call. `between` are the arguments between
    /// the files and the options. Returns the provider's result.
    template <class ENTRY, class... ARGS>
    long call(ENTRY &entry, void *context, const CStringList &files, ARGS... between) {
        std::vector<char *> array = fileArray(files);
        const long count = files.GetCount();
        log_.before(entry.name(), count, array.data());
        const long result = entry(context, window_, count, array.data(), between..., CMProperty::getPvOptions());
        logResult(entry.name(), result);
        return result;
    }
    /// Logs the end of a call.
    void logResult(const CString &entry, long result);

    /// Reads the unit's file again after the provider has changed it, and replaces the unit in the batch; removes
    /// it from the batch, with a message that names `file`, if the file can't be loaded. Returns the unit that is
    /// now in the model, or null.
    IUnit *reload(IUnit &unit, IUnit *(*read)(IUnit &), const CString &file, core::ReloadingBatch &batch,
                  OutcomeReport &report);

    // Update one aspect of a unit, after a log line that names it.
    void updateHeader(IUnit &unit);
    void updateMode(IUnit &unit, const CString &logged = "Updating CM Mode for unit ");
    void updateStatus(IUnit &unit, void *context);
    /// Updates all three, as an operation does that changes the archive's record of a unit.
    void updateAll(IUnit &unit, void *context);

  private:
    CallLog log_;
    LogsReturn logsReturn_;
    HWND window_ = topMostWindow();
};

/// Starts the guard for the unit and returns the path of its file as the provider is given it.
[[nodiscard]] CString guardedPath(CMORYHandler &guard, IUnit &unit, CMORYHandler::ORYOPER operation);
/// Does the same without replacing doubled backslashes.
[[nodiscard]] CString guardedPathAsIs(CMORYHandler &guard, IUnit &unit, CMORYHandler::ORYOPER operation);
/// Replaces doubled backslashes by single ones.
[[nodiscard]] CString withSingleBackslashes(CString path);

/// Returns what the first argument of the list answers for the name; empty without one.
[[nodiscard]] CString answerOfHead(const CMArgumentList &args, const CString &name);

/// Returns whether an open project has the property of all providers set to true.
[[nodiscard]] bool isOpenProjectPropertyTrue(const CString &key);

/// Returns the unit in front of the list; null, which means the active project, for an empty one.
[[nodiscard]] IUnit *headOf(const CMUnitList &units);

[[nodiscard]] bool isEmbeddedFile(const IUnit &unit);

} // namespace provider
