#include "orchard/dialogs/Icons.h"

#include "CM/host/DialogHelpers.h"
#include "CM/host/IProject.h"

#include <array>

namespace {

using orchard::Icon;

constexpr std::array names = {"project",       "subsystem", "class",           "unit overlay", "component",
                              "configuration", "file",      "embedded file",   "fragment",     "workspace",
                              "unit",          "element",   "modified overlay"};
static_assert(static_cast<int>(Icon::unitOverlay) == 3 && static_cast<int>(Icon::modifiedOverlay) == 12,
              "the library answers these two numbers for overlays");
static_assert(names.size() == static_cast<std::size_t>(Icon::modifiedOverlay) + 1);

template <class KIND> bool isA(const IDObject *object) { return dynamic_cast<const KIND *>(object) != nullptr; }

Icon iconOf(const IDObject *object) {
    if (isA<IUnit>(object)) {
        return isA<IProject>(object)       ? Icon::project
               : isA<ISubsystem>(object)   ? Icon::subsystem
               : isA<IClass>(object)       ? Icon::classUnit
               : isA<IComponent>(object)   ? Icon::component
               : isA<IFile>(object)        ? Icon::file
               : isA<IEmbededFile>(object) ? Icon::embeddedFile
               : isA<IWorkspace>(object)   ? Icon::workspace
                                           : Icon::otherUnit;
    }
    return isA<ICodeGenConfigInfo>(object) ? Icon::configuration
           : isA<IFileFragment>(object)    ? Icon::fragment
                                           : Icon::element;
}

} // namespace

void GetOrchardIconsList(CImageList &images, bool small) {
    images.RemoveAll();
    for (const char *const name : names) {
        images.Add(small ? CString(name) : CString("large ") + name);
    }
}

int oiGetObjectIcon(const IDObject *object) { return object == nullptr ? -1 : static_cast<int>(iconOf(object)); }
