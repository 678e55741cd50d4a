#include "CM/CMSupport/core/CMToolShellInterface.h"

#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/PropertyKeys.h"
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

/// Writes to the output window's stream, if there is one.
void show(const CString &text) {
    if (std::ostream *const stream = getMainCMOutputer()()) {
        *stream << text << std::flush;
    }
}

/// Reads the number at the start of a text as atoi does. Returns 0 without one, or if it is too large for an int.
int leadingNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\r\v\f"), text.size()));
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// Returns the time limit of the wait in milliseconds.
int waitLimit() {
    const IProperty *const property =
        CMProperty::getToolProperty(IPN::CMChildThreadTimeOut, nullptr, IProperty::inherited, false);
    const int limit = property == nullptr ? 0 : leadingNumber(property->getValue());
    return limit == 0 ? noLimit : limit;
}

/// Makes the working directory the current directory of the process from enter() until leave() or destruction.
class DirectoryVisit {
  public:
    /// Returns `entered`. If it is false, assigns the reason to `error` and shows it.
    static bool checkEntered(bool entered, const CString &directory, CString &error) {
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
        return checkEntered(away_, directory, error);
    }
    bool leave(CString &error) {
        away_ = false;
        // Required: on failure the message replaces the tool's errors.
        return checkEntered(platform::setCurrentDirectory(home_), home_, error);
    }

  private:
    CString home_;
    bool away_ = false;
};

/// Moves the lines to the end of the text and frees each one at once: a listing may take most of the memory.
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
    // Required: "TRUE" in any case, unlike the setting of the trace.
    if (oqGetEnvVar("General", "ShowMessageOnCMCommandTimeout", value, &second) == 1 &&
        value.CompareNoCase("TRUE") == 0) {
        notifyUser(message, messageLevelDefault);
    }
}

using Match = CMToolRun::Match;

/// Tests what the tool printed, and shows the user a message box for the first pattern that matches. The text
/// before `own` is that of earlier runs: it counts for the box, but not for the result.
Match check(std::string_view text, std::size_t own) {
    const auto test = [&](const char *key, Match match, resources::Text message, unsigned int icon) {
        CString value;
        CMProperty::getToolPropertyValue(key, value, false);
        const auto matches = [&value](std::string_view tested) {
            std::string_view unused;
            return SPPattern(value, "i").m(tested, unused) != 0;
        };
        if (value.IsEmpty() || !matches(text)) {
            return std::optional<Match>();
        }
        notifyUserAndAsk(resources::text(message), icon, 0, messageLevelDefault);
        return std::optional(own == 0 || matches(text.substr(own)) ? match : Match::none);
    };
    if (text.empty()) {
        return Match::none;
    }
    using enum resources::Text;
    if (const auto error = test(keys::errorPattern, Match::error, commandReportedError, MB_ICONHAND)) {
        return *error;
    }
    return test(keys::warningPattern, Match::warning, commandReportedWarning, MB_ICONEXCLAMATION)
        .value_or(Match::none);
}

/// Runs a command that is not empty in the current directory.
void runHere(CString command, CString &output, CString &error, CMToolRun &report) {
    show(command + "\n");
    const int limit = waitLimit();

    // Required: quotes don't protect a ">". Templates rely on the first one being the redirection.
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
    report.end = worker->end;
    if (status == WAIT_TIMEOUT) {
        report.end.kind = RunEnd::Kind::timedOut;
    }
    const std::size_t ownErrors = error.view().size();
    const std::size_t ownOutput = output.view().size();
    bool succeeded = worker->errorLines.IsEmpty();
    if (!succeeded) {
        append(error, worker->errorLines);
        report.errors = error.view().substr(ownErrors);
        append(report.output, worker->outputLines); // the caller's text doesn't receive them
        show(error);
    } else if (!worker->outputLines.IsEmpty()) {
        succeeded = status != WAIT_TIMEOUT;
        append(succeeded ? output : error, worker->outputLines);
        if (!succeeded) {
            report.output = error.view().substr(ownErrors);
        }
    }
    worker.reset();
    target.reset();

    if (!succeeded) {
        show(error); // required: error lines appear in the window twice
        report.match = check(error, ownErrors);
    } else if (getMainCMOutputer()() != nullptr) { // required: without a stream, good output is not tested
        show(output);
        debugTrace({"command output: ", output, "\n"});
        report.match = check(output, ownOutput);
    }
    // Required: text that the caller's arguments contained before suppresses the report too.
    if (status == WAIT_TIMEOUT && output.IsEmpty() && error.IsEmpty() && command.Find("lsrevs -graph") < 0) {
        reportTimeOut();
    }
}

} // namespace

CMToolShellInterface *theCMToolShellInterface() {
    static CMToolShellInterface shell;
    return &shell;
}

int CMToolShellInterface::Execute(const CString &command, CString &output, CString &error,
                                  CString /*directory*/) { // required: has no effect
    CMToolRun run;
    return Execute(command, output, error, run);
}

int CMToolShellInterface::Execute(const CString &command, CString &output, CString &error, CMToolRun &run) {
    run.command = command;
    const CString home = oqGetFullPathOfDirectory(CString(), error);
    if (home.IsEmpty()) {
        show(error);
        return 0;
    }
    DirectoryVisit visit(home);
    if (!visit.enter(paths::workingDirectory(), error)) {
        return 0;
    }
    if (command.IsEmpty()) {
        debugTrace({"no command to execute\n"});
    } else {
        runHere(command, output, error, run);
    }
    return visit.leave(error) ? 1 : 0;
}

int CMToolShellInterface::checkCommandResults(const CString &text) {
    return check(text, 0) == CMToolRun::Match::none ? 1 : 0;
}
