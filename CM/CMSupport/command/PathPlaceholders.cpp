#include "CM/CMSupport/command/PathPlaceholders.h"

#include "CM/CMSupport/core/HostPaths.h"
#include "CM/host/Utilities.h"

namespace command {

namespace {

bool holds(const CString &text, std::string_view placeholder) { return text.Find(placeholder) >= 0; }

} // namespace

void fillInMove(CString &text, const Directories &directories, const IUnit &unit, MoveForm form) {
    const auto nameIn = [&](const CString &directory) {
        CString name = directory;
        if (!form.isPackage) {
            // Required: an empty setting doubles the separator.
            // Test: MoveMember.MovesAFileWithADoubledSeparatorWhereItHasNoDirectory.
            name = paths::join(name, unit.getPersistAs());
        }
        return form.asDirectory ? name : paths::join(name, unit.getFileName());
    };
    text.Replace("$olddir", directories.from);
    text.Replace("$newdir", directories.to);
    text.Replace("$oldName", nameIn(directories.from));
    text.Replace("$newName", nameIn(directories.to));
}

void fillInRename(CString &text, const CString &from, const CString &to) {
    text.Replace("$dir", paths::hostDirectoryOf(from));
    text.Replace("$olddir", paths::hostDirectoryOf(from));
    text.Replace("$newdir", paths::hostDirectoryOf(to));
    text.Replace("$oldName", from);
    text.Replace("$newName", to);
}

void fillInRenameDirectory(CString &text, const CString &renameTemplate, const Directories &directories) {
    if (holds(renameTemplate, "$olddir") || holds(renameTemplate, "$dir")) {
        const CString outer = outerDirectory(directories.from);
        text.Replace("$dir", outer);
        text.Replace("$oldDir", outer);
    }
    if (holds(renameTemplate, "$newdir")) {
        text.Replace("$newdir", outerDirectory(directories.to));
    }
    text.Replace("$oldName", directories.from);
    text.Replace("$newName", directories.to);
}

CString outerDirectory(const CString &directory) {
    const int last = directory.ReverseFind(oqPathSeparator());
    return last < 0 ? directory : directory.Left(last);
}

} // namespace command
