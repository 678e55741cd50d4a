#include "CM/CMSupport/core/CMArchiveItem.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/HostPaths.h"
#include "CM/CMSupport/core/ItemTexts.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/IUnit.h"
#include "CM/host/Utilities.h"
#include "CM/platform/PathText.h"

#include <string>
#include <string_view>

namespace {

/// Required: a dot in a directory name counts. Test: ArchiveItem.IsCutAtADotInADirectoryNameToo.
CString withoutSuffix(const CString &name) {
    const int dot = name.ReverseFind('.');
    return dot < 0 ? name : name.Left(dot);
}

CString withoutWorkingDirectory(const CString &name) {
    const CString working = paths::workingDirectory();
    // Required: the next character is removed too, whatever it is. Test:
    // ArchiveItem.LosesACharacterWithoutAWorkingDirectory.
    return paths::beginsNoCase(name, working) ? name.Mid(working.GetLength() + 1) : name;
}

/// Removes what the template "Repository" adds to a path below the workspace: at the start of the name the text
/// before "$SubDirs", and at the end of its directory the text between "$SubDirs" and "$FileName" except the first
/// character, the separator. A template that contains "$ArchivePath", or lacks one of the other two, leaves the
/// name unchanged.
CString withoutLayout(CString name, CString layout) {
    constexpr std::string_view subDirs = "$SubDirs";
    const int directories = layout.Find(subDirs);
    const int file = layout.Find("$FileName");
    if (layout.Find("$ArchivePath") >= 0 || directories < 0 || file < 0) {
        return name;
    }
    layout = layout.Left(file);
    const CString root = layout.Left(directories);
    if (paths::beginsNoCase(name, root)) {
        name.Delete(0, root.GetLength());
    }
    // Required: also removes the root from the template if the name doesn't begin with it.
    layout.Delete(0, root.GetLength() + static_cast<int>(subDirs.size()));
    if (layout.IsEmpty() || layout == "/" || layout == "\\") {
        return name;
    }
    const int last = name.ReverseFindOneOf(platform::separators);
    const CString directory = name.Left(last + 1);
    if (!paths::endsNoCase(directory, layout)) {
        return name;
    }
    return directory.Left(directory.GetLength() - layout.GetLength() + 1) + name.Mid(last + 1);
}

} // namespace

CMArchiveItem::CMArchiveItem(const Listed &listed, ItemTexts &texts)
    : text_(texts.keep({listed.fileNameWithPath, listed.version, listed.locker})),
      path_(static_cast<std::uint32_t>(listed.fileNameWithPath.size())),
      version_(static_cast<std::uint32_t>(listed.version.size())),
      locker_(static_cast<std::uint32_t>(listed.locker.size())), mode_(listed.mode) {}

CMArchiveItem::CMArchiveItem(const CString &fileNameWithPath, const CString &version, const Mode &mode,
                             const CString &locker, const CString &status)
    : path_(static_cast<std::uint32_t>(fileNameWithPath.view().size())),
      version_(static_cast<std::uint32_t>(version.view().size())),
      locker_(static_cast<std::uint32_t>(locker.view().size())),
      status_(static_cast<std::uint32_t>(status.view().size())), mode_(mode) {
    keep({fileNameWithPath, version, locker, status});
}

void CMArchiveItem::setStatus(const CString &status) {
    keep({path(), text().substr(path_, version_), text().substr(path_ + version_, locker_), status});
    status_ = static_cast<std::uint32_t>(status.view().size());
}

/// Stores the parts in a separate block of memory.
void CMArchiveItem::keep(std::initializer_list<std::string_view> parts) {
    const auto own = std::make_shared<std::string>();
    for (const std::string_view part : parts) {
        own->append(part);
    }
    text_ = {own, own->data()};
}

CString CMArchiveItem::getSuffix() const {
    const std::size_t dot = path().rfind('.');
    return dot == std::string_view::npos ? CString() : CString(path().substr(dot));
}

CString CMArchiveItem::getFileName() const { return platform::fileOfPath(path()); }

CString CMArchiveItem::getName() const { return platform::fileOfPath(withoutSuffix(path())); }

CString CMArchiveItem::getType() const { return IProject::fileExtension2UnitType(getSuffix()); }

CString CMArchiveItem::getNameNShortPath(bool withExtension) const {
    if (CMProperty::isPre40Compatible()) {
        return withExtension ? getFileName() : getName();
    }
    const CString name = withExtension ? CString(path()) : withoutSuffix(path());
    CString layout;
    if (CMProperty::getUseSCCtool() == 0) {
        CMProperty::getToolPropertyValue(keys::repository, layout, false);
    }
    return layout.IsEmpty() ? withoutWorkingDirectory(name) : withoutLayout(name, layout);
}

CString CMArchiveItem::getLocalPath() const {
    const IProject *const project = CurrentWorkspace::GetActiveProject();
    if (project == nullptr) {
        return {};
    }
    if (getFileName().CompareNoCase(project->getFileName()) == 0) {
        return project->getOwnDirectory();
    }
    return platform::directoryOfPath(paths::join(paths::workingDirectory(), getNameNShortPath(false)));
}

CString CMArchiveItem::getFullUnitFileName() const {
    CString fullName = path();
    const IUnit *const unit = IUnit::getByFile(fullName);
    if (unit != nullptr && unit->isExternalUnitRecursive()) {
        return fullName; // an external unit is stored where the tool reports it
    }
    return paths::join(getLocalPath(), getFileName());
}

CString CMArchiveItem::getFileNameForRepFiles() const {
    if (!IUnit::isFullPathRepFiles()) {
        return getFileName();
    }
    const IProject *const project = CurrentWorkspace::GetActiveProject();
    const CString base = project != nullptr ? project->getOwnDirectory() : getLocalPath();
    CString fullName = path();
    if (base.IsEmpty() || oqIsAbsolutePath(fullName)) {
        return fullName;
    }
    // Removes the dot of "./File". Required: also that of ".hidden".
    return fullName.GetAt(0) == '.' ? base + fullName.Mid(1) : paths::join(base, fullName);
}
