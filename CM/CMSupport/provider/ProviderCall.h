// Logs and reports the calls of a provider.
#pragma once

#include "CM/CMSupport/core/OutcomeReport.h"
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

/// Returns the texts of a list as the array that an entry takes. It is valid until the list changes; a provider
/// must not write to it.
[[nodiscard]] std::vector<char *> fileArray(const CStringList &files);

/// Adds a call to the report. A result other than 0 makes the item failed, or declined if the user has cancelled;
/// the reason is the result's message.
void reportCall(OutcomeReport &report, const CString &entry, long result);

} // namespace provider
