#include "CM/CMSupport/core/CMPathMapper.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/Paths.h"
#include "CM/host/Utilities.h"

namespace {

/// As many characters from the end of `path` as it is longer than `root`, without separators at the ends. Where
/// the root stands in the path makes no difference, deliberately.
CString behindLengthOf(const CString &root, const CString &path) {
    CString rest = path.Right(path.GetLength() - root.GetLength());
    rest.Trim();
    return rest.Trim(paths::separators);
}

CString trimmed(CString path) { return path.Trim(); }

} // namespace

CString CMPathMapper::expandedRepository() {
    CMArchive mainArchive{CString()};
    CMArgumentList arguments(10);
    arguments.AddTail(&mainArchive);
    CString repository;
    CString error;
    // The return is of no use: variables of the layout stay unresolved here, and count as a failure.
    CMProperty::ExpandProperty("Repository", arguments, repository, error, false);
    return repository;
}

bool CMPathMapper::isLayout(const CString &repository) {
    return !repository.IsEmpty() && repository.Find("$ArchivePath") < 0;
}

CString CMPathMapper::getArchiveSubDirFromLocalPath(const CString &path) {
    CString copy = trimmed(path);
    if (copy.IsEmpty()) {
        return copy;
    }
    const CString working = CMProperty::getWorkingDir();
    return copy.Find(working) < 0 ? copy : behindLengthOf(working, copy);
}

CString CMPathMapper::getArchivePathFromLocalPath(const CString &path) {
    const CString subDirectories = getArchiveSubDirFromLocalPath(path);
    CString repository = expandedRepository();
    if (!isLayout(repository)) {
        return path;
    }
    repository.Replace("$SubDirs", subDirectories.IsEmpty() ? subDirectories : oqPathSeparator() + subDirectories);
    return repository;
}

CString CMPathMapper::getLocalPathFromArchivePath(const CString &path) {
    CString copy = trimmed(path);
    if (copy.IsEmpty()) {
        return copy;
    }
    const CString repository = expandedRepository();
    if (!isLayout(repository)) {
        return copy;
    }
    const CString below = copy.Find(repository) < 0 ? CString() : behindLengthOf(repository, copy);
    return paths::join(CMProperty::getWorkingDir(), below);
}
