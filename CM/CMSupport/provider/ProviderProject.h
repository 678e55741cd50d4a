// ProviderProject: opens one provider project, step by step, whether it is already known or the user chooses it.
#pragma once

#include "CM/CMSupport/core/OutcomeReport.h"
#include "CM/CMSupport/provider/ProviderCall.h"
#include "CM/CMSupport/provider/pvContextStruct.h"
#include "CM/platform/CString.h"

#include <array>

namespace provider {

/// Whether the log shows the result of a call.
enum class LogsResult { no, yes };

/// Each step returns whether it succeeded. If a call of the provider fails, the step shows that to the user and
/// removes the last record from the list of contexts.
class ProviderProject {
  public:
    /// `projName` and `auxPath` are the project's; the provider may change both in choose(), and the second in
    /// open(). All arguments must outlive this object.
    ProviderProject(CString &projName, CString &auxPath, OutcomeReport &report);

    /// Finds the directory that the project is for. Fails, silently, if there is no active project.
    bool findDirectory();
    /// Loads the provider's library unless that has been tried before, makes a record for a null `context`,
    /// initialises the provider's context in it, and switches the cancel mode if the project wants that.
    bool initialize(pvContextStruct *&context, LogsResult logsResult);
    /// Lets the user choose a project in the provider's dialog.
    bool choose(int isNew);
    /// Opens the project, gives its name to the record and remembers the capabilities of the provider.
    bool open(LogsResult logsResult);

    /// The name that the provider has given itself, cut to the length that the API allows.
    [[nodiscard]] CString providerName() const;

  private:
    void switchCancelMode();
    void rememberCapabilities() const;
    /// Writes the line before a call.
    void logCall(const char *entry);
    /// Logs and reports the result of a call; on failure also shows it and drops the record. Returns whether the
    /// call succeeded.
    bool succeeded(const char *entry, long result, LogsResult logsResult);

    /// A text that the provider writes. Larger than the API asks for, since providers write too much.
    using Buffer = std::array<char, 4096>;

    CString &projName_;
    CString &auxPath_;
    OutcomeReport &report_;
    CallLog log_;
    CString localPath_;
    Buffer providerName_{};
    Buffer user_{};
    unsigned long capabilities_ = 0;
    pvContextStruct *context_ = nullptr;
};

/// Closes the project of a context and ends the context.
void closeContext(void *context, CallLog &log);

/// Removes the last record from the list of contexts, if there is one. Pointers to it stay valid.
void dropLastContext();

} // namespace provider
