#include "CM/CMSupport/command/CMConnectToCMRepository.h"

#include "CM/CMSupport/command/ArchiveSelection.h"
#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/LoggedRun.h"
#include "CM/CMSupport/command/NameGuard.h"
#include "CM/CMSupport/command/ReportedExpansion.h"
#include "CM/CMSupport/core/CMOutputer.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/DebugTrace.h"
#include "CM/CMSupport/core/HostCallbacks.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/core/Unquotable.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IPN.h"

#include <string>
#include <utility>

namespace {

constexpr auto source = "../CM/CMSupport/ConnectToCMRepository";
constexpr command::RunTexts connecting{.source = source,
                                       .before = "Executing the following command to connect to archive: ",
                                       .after = "Connect to archive command returned the following: "};
constexpr command::RunTexts afterConnecting{
    .source = source,
    .before = "Executing the following command to perform post connect to archive operations: ",
    .after = "Post connect to archive command returned the following: "};

/// Removes blanks and an equals sign in front of the path: tools print "= PATH".
void tidyPath(CString &path) {
    path.Trim();
    if (path.GetAt(0) == '=') {
        path.Delete(0);
        path.Trim();
    }
}

void fillInArchivePath(const CString &key, CString &value, const CString &path) {
    if (CMProperty::getToolPropertyValue(key, value, false) != 0) {
        value.Replace("$ArchivePath", path);
        // Required even without a placeholder.
        // Test: ConnectToRepository.AValueWithoutThePlaceholderIsWrittenBackAsItWas.
        CMProperty::setToolPropertyValue(key, value);
    }
}

/// Writes the archive's path, which the connect command has printed, into the properties. Returns false, and
/// writes nothing, for a path that can't be quoted: every later command would contain it.
bool takeOverRepository(const CString &output, CString &error, OutcomeReport &report) {
    CString path;
    int wasSet = 0;
    // Required: without a match the placeholder is replaced with an empty text.
    // Test: ConnectToRepository.WithoutAMatchThePlaceholderBecomesNothing.
    CMProperty::ExtractByProperty(keys::repositoryPathPattern, output, path, wasSet, error);
    debugTrace({"Archive Repository is: '", path, "'\n"});
    if (wasSet == 1) {
        tidyPath(path);
        if (const std::string fault = paths::unquotableIn(path); !fault.empty()) {
            const CString text =
                resources::format(resources::Text::archiveNotQuotable, {paths::shownPath(path), fault});
            CMOutputer::writeToCMOutputWnd(text);
            report.fail(CMOutcome::Kind::refused, text);
            return false;
        }
        CString value;
        fillInArchivePath(keys::repository, value, path);
        fillInArchivePath(keys::archiveRoot, value, path);
    }
    return true;
}

/// Runs the two commands. Their templates see only the caller's arguments, which contain the archive of the user's
/// choice.
int connect(CMArgumentList &args, CString &error, OutcomeReport &report) {
    if (!command::mayReachCommand(args, report)) {
        return 0;
    }
    CString command;
    int result = command::expandProperty(IPN::CMConnectToCMRepository, args, command, false, report);
    if (result != 1) {
        return result;
    }
    LogTrace::Log log(LogTrace::Log::cm);
    CString output;
    result = command::runLogged(log, connecting, command, output, error, report);
    if (result != 1) {
        return result;
    }
    const bool isTaken = takeOverRepository(output, error, report);
    report.printed(std::move(output));
    if (!isTaken) {
        return 0;
    }

    command.Empty();
    error.Empty();
    result = command::expandProperty(keys::postConnect, args, command, false, report);
    if (result == 1 && !command.IsEmpty()) {
        output.Empty();
        result = command::runLogged(log, afterConnecting, command, output, error, report);
        report.printed(std::move(output));
    }
    // Required: 0 without the second property, although the project is connected.
    // Test: ConnectWithBareTool.WithoutASecondTemplateTheConnectIsReportedAsFailedThoughThePathIsWritten.
    return result;
}

} // namespace

int CMConnectToCMRepository::operator()(CMUnitList &units, CMArgumentList &args, CMDiagnosticList &diags) {
    CString error;
    if (!command::isToolConfigured(*this, false, error, diags)) {
        return 0;
    }
    core::saveModel(); // required: ConnectToRepository.SavesTheModelWhateverTheToolsPropertySays
    const IUnit *const chooser = units.IsEmpty() ? CurrentWorkspace::GetActiveProject() : units.GetHead();
    if (chooser != nullptr) { // may be: ConnectToRepository.WithoutUnitsAndWithoutAProjectPassesTheSelectionOver
        command::selectArchive(*chooser);
    }

    OutcomeReport report;
    const int result = connect(args, error, report);
    report.send();
    return result;
}
