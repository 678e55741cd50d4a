// Logs and reports the calls of a provider.
#pragma once

#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/CMSupport/provider/SccEntry.h"
#include "CM/host/LogTrace.h"
#include "CM/platform/CString.h"
#include "CM/platform/CStringList.h"

#include <vector>

namespace provider {

/// Writes the CM log for the operations of one source file, with the log lines of CMProperty around each call.
class CallLog {
  public:
    /// `source` is the source path that the lines name; a literal.
    explicit CallLog(const char *source) : source_(source) {}

    void write(const CString &text);
    /// Before a call: alone, for one file, or for the files of an array.
    void before(const CString &entry);
    void before(const CString &entry, const CString &file);
    void before(const CString &entry, long count, const char *const *files);
    /// After a call, and with its result.
    void after(const CString &entry);
    void returned(const CString &entry, long result);

  private:
    const char *source_;
    LogTrace::Log log_{LogTrace::Log::cm};
};

/// Returns the texts of a list as the array that an entry takes, with a null pointer at its end, so that the array
/// of an empty list has an address too. It is valid until the list changes; a provider must not write to it.
[[nodiscard]] std::vector<char *> fileArray(const CStringList &files);

/// Adds a call to the report. A result other than 0 makes the item failed, or declined if the user has cancelled;
/// the reason is the result's message.
void reportCall(OutcomeReport &report, const CString &entry, long result);
/// Does the same for the call of an operation. A call that reached no provider, since its library or the entry is
/// missing, reads as a success to the operation, but not in the report.
void reportCall(OutcomeReport &report, SccEntryBase &entry, long result);

/// Returns the parent for the provider's dialogs; null without a window.
[[nodiscard]] HWND topMostWindow();

} // namespace provider
