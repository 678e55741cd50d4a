#include "CM/CMSupport/core/HostPaths.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/Utilities.h"

namespace paths {

CString hostDirectoryOf(const CString &path) {
    CString directory;
    CString file;
    CString extension;
    ParseToDirFileNameAndExtension(path, directory, file, extension);
    return directory;
}

CString join(const CString &directory, const CString &file) { return directory + oqPathSeparator() + file; }

bool beginsNoCase(const CString &text, const CString &start) {
    return text.Left(start.GetLength()).CompareNoCase(start) == 0;
}

bool endsNoCase(const CString &text, const CString &end) {
    return text.Right(end.GetLength()).CompareNoCase(end) == 0;
}

CString workingDirectory() {
    CString directory = CMProperty::getWorkingDir();
    if (directory.IsEmpty()) {
        if (const IProject *const project = CurrentWorkspace::GetActiveProject()) {
            directory = project->getOwnDirectory();
        }
    }
    return directory;
}

} // namespace paths
