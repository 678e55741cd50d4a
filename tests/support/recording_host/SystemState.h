// Holds the settings, directories and files of the recording host.
#pragma once

#include "CM/platform/CString.h"

#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace recording {

struct SystemState {
    /// Settings by section and key.
    std::map<std::pair<CString, CString>, CString> settings;
    std::vector<std::pair<CString, CString>> settingsRead; ///< every setting that was read

    CString root = "/orchard"; ///< empty: oqGetRoot fails with rootError
    CString rootError = "no installation root";
    char separator = '/';
    CString tempDir = "/tmp";
    CString time = "10:20:30";
    CString date = "2024-03-01";
    CString user = "ann";
    CString errorCodeText = "no such file";
    CString fullPathError;    ///< if not empty, oqGetFullPathOfDirectory fails with it
    CString currentDirectory; ///< the full path of the empty text; if empty, that of the process
    int disabledFaults = 0;   ///< OQ_disableSE less OQ_enableSE

    /// Answers for single paths, instead of the state on disk.
    std::map<CString, bool> exists;
    std::map<CString, bool> nonEmpty;
    std::map<CString, bool> writable;
    std::map<CString, long> modifiedTime;
    std::map<CString, int> deleteResult;
    std::map<CString, int> moveResult; ///< by the source path
    std::function<void()> onDelete;    ///< called before a file is deleted; it may throw
};

} // namespace recording
