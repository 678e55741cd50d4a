#include "tests/support/recording_host/SystemState.h"

#include "CM/host/Utilities.h"
#include "CM/platform/PathText.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <cstdio>
#include <filesystem>
#include <optional>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

recording::SystemState &places() { return RecordingHost::current().places; }

template <class VALUE>
std::optional<VALUE> scripted(const std::map<CString, VALUE> &answers, const CString &path) {
    const auto found = answers.find(path);
    return found == answers.end() ? std::nullopt : std::optional<VALUE>(found->second);
}

std::optional<struct stat> onDisk(const CString &path) {
    struct stat state {};
    return ::stat(path.c_str(), &state) == 0 ? std::optional(state) : std::nullopt;
}

} // namespace

bool isOk2All = false;
bool reloadForDupId = false;

int oqGetEnvVar(const CString &section, const CString &key, CString &value, CString * /*second*/) {
    places().settingsRead.emplace_back(section, key);
    const auto found = places().settings.find({section, key});
    if (found == places().settings.end()) {
        return 0;
    }
    value = found->second;
    return 1;
}

int oqGetRoot(CString &root, CString &error) {
    if (places().root.IsEmpty()) {
        error = places().rootError;
        return 0;
    }
    root = places().root;
    return 1;
}

char oqPathSeparator() { return places().separator; }
CString oqGetTempDir() { return places().tempDir; }
CString oqGetCurrentTime() { return places().time; }
CString oqGetCurrentDate() { return places().date; }
CString oqGetCurrentUser() { return places().user; }
CString oqGetErrorCodeString() { return places().errorCodeText; }

CString oqGetFullPathOfDirectory(const CString &directory, CString &error) {
    if (!places().fullPathError.IsEmpty()) {
        error = places().fullPathError;
        return {};
    }
    const CString &current = places().currentDirectory;
    const fs::path base = current.IsEmpty() ? fs::current_path() : fs::path(current.str());
    fs::path full = (base / directory.str()).lexically_normal();
    if (!full.has_filename()) {
        full = full.parent_path();
    }
    return full.string();
}

bool oqIsAbsolutePath(const CString &path) { return platform::isAbsolutePath(path); }

bool oqFileExist(const CString &path) {
    return scripted(places().exists, path).value_or(onDisk(path).has_value());
}
bool oqFileExistsAndNonEmpty(const CString &path) {
    const auto state = onDisk(path);
    return scripted(places().nonEmpty, path).value_or(state && state->st_size > 0);
}
bool oqFileHasWritePermission(const CString &path) {
    const auto state = onDisk(path);
    return scripted(places().writable, path).value_or(state && (state->st_mode & S_IWUSR) != 0);
}
long oqGetFileLastModifiedTime(const CString &path) {
    const auto state = onDisk(path);
    return scripted(places().modifiedTime, path).value_or(state ? state->st_mtim.tv_sec : -1L);
}

int oqDeleteFile(const CString &path, int flag) {
    RecordingHost::current().note("delete file " + path + " flag=" + std::to_string(flag));
    if (places().onDelete) {
        places().onDelete();
    }
    if (const auto result = scripted(places().deleteResult, path)) {
        return *result;
    }
    std::error_code failed;
    return fs::remove(path.str(), failed) ? 1 : 0;
}
int oqMoveFileEx(const CString &from, const CString &to, int flags) {
    RecordingHost::current().note("move file " + from + " to " + to + " flags=" + std::to_string(flags));
    if (const auto result = scripted(places().moveResult, from)) {
        return *result;
    }
    constexpr int replaceExisting = 1;
    if ((flags & replaceExisting) == 0 && onDisk(to)) {
        return 0;
    }
    return std::rename(from.c_str(), to.c_str()) == 0 ? 1 : 0;
}

void ParseToDirFileNameAndExtension(const CString &path, CString &directory, CString &file, CString &extension) {
    // Computed before anything is assigned: the caller may pass the same text as input and output.
    const int separator = path.ReverseFindOneOf("/\\");
    CString before = separator < 0 ? CString() : path.Left(separator);
    const CString name = path.Mid(separator + 1);
    const int dot = name.ReverseFind('.');
    directory = std::move(before);
    file = dot < 0 ? name : name.Left(dot);
    extension = dot < 0 ? CString() : name.Mid(dot);
}

void OQ_disableSE() {
    RecordingHost::current().note("faults off");
    ++places().disabledFaults;
}
void OQ_enableSE() {
    RecordingHost::current().note("faults on");
    --places().disabledFaults;
}
