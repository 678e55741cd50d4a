// SCCPopListFunc: receives the names that SccPopulateList enumerates, in CMProperty::getFileNamesList().
#pragma once

class SCCPopListFunc {
  public:
    SCCPopListFunc() = delete;

    /// The callback for SccPopulateList. Appends the name to the list if `add` is not 0, the list does not contain
    /// it, and NeedToAddFile returns 1. Always returns 1, which continues the enumeration.
    static int InternalPopListFunc(void *data, int add, long status, char const *file);
};

/// Returns 1 for a file that belongs in a listing of the archive: any whose path doesn't contain the extension of
/// the project, and the project's own file; all others only if the tool's property "ShowAllFilesInArchive" is
/// true. Returns 0 for null, for an empty name and without an active project.
[[nodiscard]] int NeedToAddFile(char const *file);
