// Implements the host's free functions on places, files and the system.
#include "CM/host/Utilities.h"

#include "CM/platform/Files.h"
#include "CM/platform/PathText.h"
#include "orchard/settings/Places.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

bool isOk2All = false;
bool reloadForDupId = false;

namespace {

CString formattedTime(const char *format) {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    std::array<char, 64> buffer{};
    std::strftime(buffer.data(), buffer.size(), format, &parts);
    return buffer.data();
}

CString withOwnSeparators(const CString &path) {
    CString copy = path;
    copy.Replace('\\', '/');
    return copy;
}

} // namespace

int oqGetRoot(CString &root, CString &error) {
    const auto share = orchard::shareDirectory();
    if (share.empty()) {
        error = "The directory of the installed property sets was not found. Set ORCHARD_SHARE to it.";
        return 0;
    }
    root = share.string();
    return 1;
}

char oqPathSeparator() { return platform::pathSeparator(); }

CString oqGetTempDir() {
    const char *const named = std::getenv("TMPDIR");
    return named != nullptr && *named != '\0' ? named : "/tmp";
}

CString oqGetCurrentTime() { return formattedTime("%H:%M:%S"); }
CString oqGetCurrentDate() { return formattedTime("%Y-%m-%d"); }

CString oqGetCurrentUser() {
    if (const passwd *const entry = getpwuid(geteuid())) {
        return entry->pw_name;
    }
    return CString(std::to_string(geteuid()));
}

CString oqGetErrorCodeString() { return platform::lastErrorText(); }

CString oqGetFullPathOfDirectory(const CString &directory, CString &error) {
    if (directory.IsEmpty()) {
        CString current = platform::currentDirectory();
        if (current.IsEmpty()) {
            error = "The current directory is unknown: " + platform::lastErrorText();
        }
        return current;
    }
    const CString path = withOwnSeparators(directory);
    std::array<char, PATH_MAX> full{};
    if (realpath(path.c_str(), full.data()) == nullptr) {
        error = path + ": " + platform::lastErrorText();
        return {};
    }
    if (!platform::isDirectory(full.data())) {
        error = path + ": " + std::strerror(ENOTDIR);
        return {};
    }
    return full.data();
}

bool oqIsAbsolutePath(const CString &path) { return platform::isAbsolutePath(path); }

bool oqFileExist(const CString &path) { return platform::fileExists(path); }

bool oqFileExistsAndNonEmpty(const CString &path) {
    struct stat state {};
    return stat(withOwnSeparators(path).c_str(), &state) == 0 && state.st_size > 0;
}

bool oqFileHasWritePermission(const CString &path) { return platform::hasWritePermission(path); }

long oqGetFileLastModifiedTime(const CString &path) {
    struct stat state {};
    return stat(withOwnSeparators(path).c_str(), &state) == 0 ? static_cast<long>(state.st_mtime) : -1L;
}

int oqDeleteFile(const CString &path, int /*flag*/) { return platform::deleteFile(path) ? 1 : 0; }

int oqMoveFileEx(const CString &from, const CString &to, int flags) {
    constexpr int replaceExisting = 1;
    constexpr int copyAllowed = 2;
    if ((flags & replaceExisting) == 0 && platform::fileExists(to)) {
        errno = EEXIST;
        return 0;
    }
    if ((flags & copyAllowed) != 0) {
        return platform::moveFile(from, to) ? 1 : 0;
    }
    return rename(withOwnSeparators(from).c_str(), withOwnSeparators(to).c_str()) == 0 ? 1 : 0;
}

void ParseToDirFileNameAndExtension(const CString &path, CString &directory, CString &file, CString &extension) {
    // A result may be the same variable as the path.
    const CString whole = path; // NOLINT(performance-unnecessary-copy-initialization)
    const int separator = whole.ReverseFindOneOf("/\\");
    const CString name = whole.Mid(separator + 1);
    const int dot = name.ReverseFind('.');
    directory = separator < 0 ? CString() : whole.Left(separator);
    file = dot < 0 ? name : name.Left(dot);
    extension = dot < 0 ? CString() : name.Mid(dot);
}

// This host translates no hardware faults into exceptions, so there is nothing to switch; platform::runGuarded
// survives them.
void OQ_disableSE() {}
void OQ_enableSE() {}
