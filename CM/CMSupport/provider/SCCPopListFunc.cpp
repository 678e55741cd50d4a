#include "CM/CMSupport/provider/SCCPopListFunc.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/CMSupport/provider/FileNameList.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/platform/PathText.h"

#include <string_view>

namespace {

bool areAllFilesShown() {
    const IProperty *const property =
        CMProperty::getToolProperty(keys::showAllFiles, nullptr, IProperty::inherited, false);
    return property != nullptr && property->getBool();
}

/// The text after the last backslash; without one, that after the last slash.
std::string_view withoutDirectory(std::string_view path) {
    auto separator = path.rfind('\\');
    if (separator == path.npos) {
        separator = path.rfind('/');
    }
    return separator == path.npos ? path : path.substr(separator + 1);
}

} // namespace

int NeedToAddFile(char const *file) {
    const IProject *const project = CurrentWorkspace::GetActiveProject();
    if (file == nullptr || project == nullptr) {
        return 0;
    }
    const std::string_view path = file;
    if (path.empty()) {
        return 0;
    }
    if (path.find(CString(project->getFileExtension()).view()) == path.npos || areAllFilesShown()) {
        return 1;
    }
    CString name = withoutDirectory(path);
    return name.Trim() == project->getFileName() ? 1 : 0;
}

int SCCPopListFunc::InternalPopListFunc(void * /*data*/, int add, long /*status*/, char const *file) {
    FileNameList &names = CMProperty::getFileNamesList();
    if (add != 0 && file != nullptr && !names.contains(file) && NeedToAddFile(file) != 0) {
        names.AddTail(file);
    }
    return 1;
}
