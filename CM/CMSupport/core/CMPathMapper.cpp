#include "CM/CMSupport/core/CMPathMapper.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/Utilities.h"
#include "CM/platform/PathText.h"

namespace {

/// Removes as many characters from the start of `path` as `root` has, and separators at the ends of the rest.
/// Required: the position of the root in the path makes no difference.
CString withoutLengthOf(const CString &root, const CString &path) {
    CString rest = path.Right(path.GetLength() - root.GetLength());
    rest.Trim();
    return rest.Trim(platform::separators);
}

CString trimmed(CString path) { return path.Trim(); }

} // namespace

CString CMPathMapper::expandedRepository() {
    CMArchive mainArchive{CString()};
    CMArgumentList arguments(10);
    arguments.AddTail(&mainArchive);
    CString repository;
    CString error;
    // Its result is ignored: variables of the layout have no value yet, which counts as a failure.
    CMProperty::ExpandProperty(keys::repository, arguments, repository, error, false);
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
    return copy.Find(working) < 0 ? copy : withoutLengthOf(working, copy);
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
    const CString below = copy.Find(repository) < 0 ? CString() : withoutLengthOf(repository, copy);
    return paths::join(CMProperty::getWorkingDir(), below);
}
