#include "CM/CMSupport/command/CMRenameMember.h"

#include "CM/CMSupport/command/CommandRun.h"
#include "CM/CMSupport/command/LoggedRun.h"
#include "CM/CMSupport/command/NameGuard.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMUnit.h"
#include "CM/CMSupport/core/Paths.h"
#include "CM/host/Utilities.h"

namespace {

constexpr auto source = "../CM/CMSupport/RenameMember";
/// Deliberate: the run that renames the file leaves no line in the log.
constexpr command::RunTexts renamingFile{.source = source, .before = nullptr, .after = nullptr};
constexpr command::RunTexts renamingDirectory{.source = source,
                                              .before = "Executing the following command to rename the file: ",
                                              .after = "Rename file command returned the following: "};

/// The directory in which `directory` stands; itself if it is not in one.
CString outerDirectory(const CString &directory) {
    const int last = directory.ReverseFind(oqPathSeparator());
    return last < 0 ? directory : directory.Left(last);
}

bool holds(const CString &text, std::string_view placeholder) { return text.Find(placeholder) >= 0; }

CString readTemplate(const CString &key, bool hybrid) {
    CString value;
    CMProperty::getToolPropertyValue(key, value, hybrid);
    return value;
}

/// The template for the directory, filled in. What "Rename" holds decides what is replaced in "RenameDirectory",
/// and "$oldDir" is spelt with a capital here and "$olddir" there: deliberate.
CString directoryCommand(CString text, const CString &fileTemplate, const CString &from, const CString &to) {
    if (holds(fileTemplate, "$olddir") || holds(fileTemplate, "$dir")) {
        const CString outer = outerDirectory(from);
        text.Replace("$dir", outer);
        text.Replace("$oldDir", outer);
    }
    if (holds(fileTemplate, "$newdir")) {
        text.Replace("$newdir", outerDirectory(to));
    }
    text.Replace("$oldName", from);
    text.Replace("$newName", to);
    return text;
}

CString fileCommand(CString text, const CString &from, const CString &to) {
    text.Replace("$dir", paths::hostDirectoryOf(from));
    text.Replace("$olddir", paths::hostDirectoryOf(from));
    text.Replace("$newdir", paths::hostDirectoryOf(to));
    text.Replace("$oldName", from);
    text.Replace("$newName", to);
    return text;
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
    if (oldPath == newPath) {
        return 1; // also without a tool: deliberate
    }
    CString error;
    if (!command::isToolConfigured(*this, hybrid, error, diags)) {
        return 0;
    }
    const CString fileTemplate = readTemplate("Rename", hybrid);
    if (fileTemplate.IsEmpty()) {
        return 0;
    }
    CString fileTo = newPath;
    CString directoryTemplate;
    const CString oldDirectory = paths::hostDirectoryOf(oldPath);
    const CString newDirectory = paths::hostDirectoryOf(newPath);
    if (!command::mayReachCommand(*unit) ||
        !command::mayReachCommand({oldPath, newPath, oldDirectory, newDirectory, outerDirectory(oldDirectory),
                                   outerDirectory(newDirectory)})) {
        return 0;
    }
    if (oldDirectory != newDirectory) {
        directoryTemplate = readTemplate("RenameDirectory", hybrid);
        if (!directoryTemplate.IsEmpty()) {
            directoryTemplate = directoryCommand(directoryTemplate, fileTemplate, oldDirectory, newDirectory);
            // The file keeps to the old directory first: the directory follows with all that is in it.
            fileTo = paths::join(oldDirectory, unit->getFileName());
        }
    }

    CMArgumentList args(10);
    CMArchive archive("");
    const command::PushedArgument pushedArchive(args, archive);
    CMUnit unitArgument(unit);
    const command::PushedArgument pushedUnit(args, unitArgument);
    LogTrace::Log log(LogTrace::Log::cm);
    const auto run = [&](const CString &text, const command::RunTexts &texts) {
        CString command;
        CString output;
        if (CMProperty::Expand(text, args, command, error, false) != 1) {
            return 0;
        }
        return command::runLogged(log, texts, command, output, error);
    };
    const int renamed = run(fileCommand(fileTemplate, oldPath, fileTo), renamingFile);
    if (renamed == 1 && !directoryTemplate.IsEmpty()) {
        error.Empty();
        run(directoryTemplate, renamingDirectory);
    }
    return 1; // whatever the two runs gave: deliberate
}
