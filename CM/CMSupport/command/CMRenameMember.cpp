#include "CM/CMSupport/command/CMRenameMember.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/LoggedRun.h"
#include "CM/CMSupport/command/NameGuard.h"
#include "CM/CMSupport/command/PathPlaceholders.h"
#include "CM/CMSupport/command/ReportedExpansion.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMUnit.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/PropertyKeys.h"

#include <utility>

namespace {

constexpr auto source = "../CM/CMSupport/RenameMember";
/// Required: the run that renames the file writes no log lines.
/// Test: RenameMember.WithinOneDirectoryRunsOneCommandWithoutLogLines.
constexpr command::RunTexts renamingFile{.source = source, .before = nullptr, .after = nullptr};
constexpr command::RunTexts renamingDirectory{.source = source,
                                              .before = "Executing the following command to rename the file: ",
                                              .after = "Rename file command returned the following: "};

CString readTemplate(const CString &key, bool hybrid) {
    CString value;
    CMProperty::getToolPropertyValue(key, value, hybrid);
    return value;
}

/// Runs the commands for two paths that differ.
int rename(IUnit &unit, const CString &oldPath, const CString &newPath, bool hybrid, CString &error,
           OutcomeReport &report) {
    const CString fileTemplate = readTemplate(keys::rename, hybrid);
    if (fileTemplate.IsEmpty()) {
        report.lacksCommand(keys::rename);
        return 0;
    }
    CString fileTo = newPath;
    CString directoryTemplate;
    const CString oldDirectory = paths::hostDirectoryOf(oldPath);
    const CString newDirectory = paths::hostDirectoryOf(newPath);
    CMArgumentList args(10);
    CMArchive archive("");
    const command::PushedArgument pushedArchive(args, archive);
    CMUnit unitArgument(&unit);
    const command::PushedArgument pushedUnit(args, unitArgument);
    command::Names names = command::namesIn(args);
    names.insert(names.end(), {oldPath, newPath});
    if (!command::mayReachCommand({oldPath, newPath, oldDirectory, newDirectory,
                                   command::outerDirectory(oldDirectory), command::outerDirectory(newDirectory)},
                                  report) ||
        !command::mayReachCommand(unit, names, report)) {
        return 0;
    }
    if (oldDirectory != newDirectory) {
        directoryTemplate = readTemplate(keys::renameDirectory, hybrid);
        if (!directoryTemplate.IsEmpty()) {
            command::fillInRenameDirectory(directoryTemplate, fileTemplate, {oldDirectory, newDirectory});
            // The file is renamed in its old directory; then the directory moves with all its contents.
            fileTo = paths::join(oldDirectory, unit.getFileName());
        }
    }

    LogTrace::Log log(LogTrace::Log::cm);
    const auto run = [&](const CString &text, const char *key, const command::RunTexts &texts) {
        CString command;
        CString output;
        if (command::expandTemplate(text, key, args, command, report) != 1) {
            return 0;
        }
        const int result = command::runLogged(log, texts, command, output, error, report);
        report.printed(std::move(output));
        return result;
    };
    CString fileCommand = fileTemplate;
    command::fillInRename(fileCommand, oldPath, fileTo);
    const int renamed = run(fileCommand, keys::rename, renamingFile);
    if (renamed == 1 && !directoryTemplate.IsEmpty()) {
        error.Empty();
        run(directoryTemplate, keys::renameDirectory, renamingDirectory);
    }
    return 1; // required: the runs don't count. Test: RenameMember.ASecondRunThatFailsChangesNoResult
}

} // namespace

int CMRenameMember::operator()(CMUnitList & /*units*/, CMArgumentList & /*args*/, CMDiagnosticList & /*diags*/,
                               bool /*hybrid*/) {
    return 0;
}

int CMRenameMember::operator()(IUnit *unit, const CString &oldPath, const CString &newPath,
                               CMDiagnosticList &diags, bool hybrid) {
    if (unit == nullptr) {
        return 0;
    }
    OutcomeReport report(*unit);
    if (oldPath == newPath) {
        report.sendAs(CMOutcome::Kind::nothingToDo);
        return 1; // required even without a tool: RenameMember.WithEqualPathsGivesOneAndAsksForNoTool
    }
    CString error;
    if (!command::isToolConfigured(*this, hybrid, error, diags)) {
        return 0;
    }
    const int result = rename(*unit, oldPath, newPath, hybrid, error, report);
    report.send();
    return result;
}
