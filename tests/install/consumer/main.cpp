// Reads all of the installed headers and uses a little of the library.
#include "all_headers.h"

#include <cstdio>

int main() {
    CMLabel label("R 1");
    CMArgumentList args;
    args.AddTail(&label);
    CMUnitList units(10);
    units.AddTail(static_cast<IUnit *>(nullptr));
    CMFacade::removeDuplicatesFromItemList(units);
    const CString value = args.GetHead()->substitute("label");
    std::printf("%s %d %d\n", value.c_str(), units.GetCount(), getOverlayImage(nullptr));
    return value == "\"R 1\"" && units.IsEmpty() && getOverlayImage(nullptr) == 0 ? 0 : 1;
}
