#include "CM/CMSupport/core/CMToolShellInterface.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/CMSupport/core/Paths.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/IPN.h"
#include "CM/host/Messages.h"
#include "CM/host/RunThread.h"
#include "CM/host/SPString.h"
#include "CM/host/Utilities.h"
#include "CM/platform/Files.h"
#include "CM/platform/InheritableFile.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>
#include <ostream>

namespace {

constexpr int noLimit = -1;

/// The output window's stream, which may be missing.
void show(const CString &text) {
    if (std::ostream *const stream = getMainCMOutputer()()) {
        *stream << text << std::flush;
    }
}

/// The number that a text begins with, as atoi reads it; 0 without one, or with one that is too large for an int.
int leadingNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\r\v\f"), text.size()));
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// Milliseconds, as they go to the wait.
int waitLimit() {
    const IProperty *const property =
        CMProperty::getToolProperty(IPN::CMChildThreadTimeOut, nullptr, IProperty::inherited, false);
    const int limit = property == nullptr ? 0 : leadingNumber(property->getValue());
    return limit == 0 ? noLimit : limit;
}

/// The process's current directory is the working directory while one lives that has entered it.
class DirectoryVisit {
  public:
    /// On failure `error` tells why and has been shown.
    static bool tell(bool entered, const CString &directory, CString &error) {
        if (!entered) {
            const CString reason = oqGetErrorCodeString();
            error = resources::format(resources::Text::cannotEnterDirectory, {directory, reason});
            show(error);
        }
        return entered;
    }

    explicit DirectoryVisit(CString home) : home_(std::move(home)) {}
    DirectoryVisit(const DirectoryVisit &) = delete;
    DirectoryVisit &operator=(const DirectoryVisit &) = delete;
    ~DirectoryVisit() {
        if (away_) {
            platform::setCurrentDirectory(home_);
        }
    }

    bool enter(const CString &directory, CString &error) {
        away_ = platform::setCurrentDirectory(directory);
        return tell(away_, directory, error);
    }
    bool leave(CString &error) {
        away_ = false;
        // On failure the message takes the place of the tool's errors, deliberately.
        return tell(platform::setCurrentDirectory(home_), home_, error);
    }

  private:
    CString home_;
    bool away_ = false;
};

/// Moves the lines to the end of the text: a listing may take most of the memory.
void append(CString &text, CStringList &lines) {
    while (!lines.IsEmpty()) {
        if (text.IsEmpty()) {
            text = lines.RemoveHead();
        } else {
            text += lines.RemoveHead();
        }
    }
}

void reportTimeOut() {
    const CString message = resources::text(resources::Text::commandTimedOut);
    show(message);
    debugTrace({message});
    CString value;
    CString second;
    // TRUE in any case, deliberately, though the switch of the trace is read to the letter.
    if (oqGetEnvVar("General", "ShowMessageOnCMCommandTimeout", value, &second) == 1 &&
        value.CompareNoCase("TRUE") == 0) {
        notifyUser(message, messageLevelDefault);
    }
}

/// Runs the command, which is not empty, in the current directory.
void run(CMToolShellInterface &shell, CString command, CString &output, CString &error) {
    show(command + "\n");
    const int limit = waitLimit();

    // Quotes don't protect a ">", deliberately: templates rely on the first one being the redirection.
    std::optional<platform::InheritableFile> target; // outlives the worker
    std::unique_ptr<RunThread> worker;
    if (const int redirection = command.Find('>'); redirection < 0) {
        worker = std::make_unique<RunThread>(command);
    } else {
        target.emplace(command.Mid(redirection + 1));
        command = command.Left(redirection);
        worker = std::make_unique<RunThreadRedirect>(command, target->handle());
    }

    const int status = worker->getStatus(limit);
    bool succeeded = worker->errorLines.IsEmpty();
    if (!succeeded) {
        append(error, worker->errorLines);
        show(error);
    } else if (!worker->outputLines.IsEmpty()) {
        succeeded = status != WAIT_TIMEOUT;
        append(succeeded ? output : error, worker->outputLines);
    }
    worker.reset();
    target.reset();

    if (!succeeded) {
        show(error); // error lines stand in the window twice, deliberately
        shell.checkCommandResults(error);
    } else if (getMainCMOutputer()() != nullptr) { // without a stream good output is not tested, deliberately
        show(output);
        debugTrace({"command output: ", output, "\n"});
        shell.checkCommandResults(output);
    }
    // What the caller's texts held before suppresses the report too, deliberately.
    if (status == WAIT_TIMEOUT && output.IsEmpty() && error.IsEmpty() && command.Find("lsrevs -graph") < 0) {
        reportTimeOut();
    }
}

} // namespace

CMToolShellInterface *theCMToolShellInterface() {
    static CMToolShellInterface shell;
    return &shell;
}

int CMToolShellInterface::Execute(const CString &command, CString &output, CString &error, CString directory) {
    const CString home = oqGetFullPathOfDirectory(CString(), error);
    if (home.IsEmpty()) {
        show(error);
        return 0;
    }
    directory = paths::workingDirectory(); // what the caller passes has no effect, deliberately
    DirectoryVisit visit(home);
    if (!visit.enter(directory, error)) {
        return 0;
    }
    if (command.IsEmpty()) {
        debugTrace({"no command to execute\n"});
    } else {
        run(*this, command, output, error);
    }
    return visit.leave(error) ? 1 : 0;
}

int CMToolShellInterface::checkCommandResults(const CString &text) {
    if (text.IsEmpty()) {
        return 1;
    }
    const auto matches = [&text](const char *key) {
        CString pattern;
        CMProperty::getToolPropertyValue(key, pattern, false);
        std::string_view unused;
        return !pattern.IsEmpty() && SPPattern(pattern, "i").m(text, unused) != 0;
    };
    if (matches("OperationErrorPattern")) {
        notifyUserAndAsk(resources::text(resources::Text::commandReportedError), MB_ICONHAND, 0,
                         messageLevelDefault);
        return 0;
    }
    if (matches("OperationWarningPattern")) {
        notifyUserAndAsk(resources::text(resources::Text::commandReportedWarning), MB_ICONEXCLAMATION, 0,
                         messageLevelDefault);
        return 0;
    }
    return 1;
}
