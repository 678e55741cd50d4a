#include "CM/host/DialogHelpers.h"

int CShellIconLoader::DoGetShellIcon(const CString &fileName) {
    // The kind of a file is its extension. A dot in a directory's name, or one that begins the file's, makes none.
    const int dot = fileName.ReverseFind('.');
    const int name = fileName.ReverseFindOneOf("/\\") + 1;
    CString kind = dot > name ? fileName.Mid(dot) : CString();
    kind.MakeLower();
    const auto [entry, isNew] = loaded_.try_emplace(kind, 0);
    if (isNew) {
        entry->second = images_.Add("file" + kind);
    }
    return entry->second;
}
