#include "CM/host/DialogHelpers.h"

int CShellIconLoader::DoGetShellIcon(const CString &fileName) {
    // The extension decides on the icon. A dot in a directory's name, or at the start of the file's, begins no
    // extension.
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
