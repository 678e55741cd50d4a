#include "CM/CMSupport/core/InformationFiles.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/ProjectProperty.h"
#include "CM/CMSupport/core/PropertyKeys.h"
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/Iterators.h"

#include <algorithm>

namespace {

// Returns the subsystem that contains an element, directly or through a top-level class; null without one.
const ISubsystem *subsystemOf(const IDObject &element) {
    const IDObject *owner = element.getOwner();
    if (const auto *const holder = dynamic_cast<const IClass *>(owner);
        holder != nullptr && holder->isTopLevel()) {
        owner = holder->getOwner();
    }
    return dynamic_cast<const ISubsystem *>(owner);
}

} // namespace

bool isFileNotSAMappedToUnit(const IUnit *unit, const IComponent *component) {
    return unit != nullptr && component != nullptr && InformationFiles(component).isFileNotMapped(*unit);
}

InformationFiles::InformationFiles() {
    const IProject *const project = CurrentWorkspace::GetActiveProject();
    const IComponent *const component = project == nullptr ? nullptr : project->doGetComponent();
    const ICodeGenConfigInfo *const config = component == nullptr ? nullptr : component->DoGetActiveConfig();
    if (config != nullptr && config->isRespectMode() && isGeneralPropertyTrue(keys::respectSynchronized, true)) {
        component_ = component;
    }
}

bool InformationFiles::holdFor(const IUnit *unit) {
    if (unit == nullptr || component_ == nullptr) {
        return false;
    }
    if (isFileNotMapped(*unit)) {
        return true;
    }
    if (dynamic_cast<const ISubsystem *>(unit) == nullptr) {
        return false;
    }
    IUnitAggregatesIterator inside(unit, 0);
    for (const IUnit *inner = inside.first(); inner != nullptr; inner = inside.next()) {
        const bool isOwn = inner == unit || !inner->isSaveUnit();
        const bool isTested =
            dynamic_cast<const ISubsystem *>(inner) != nullptr || dynamic_cast<const IClass *>(inner) != nullptr;
        if (isOwn && isTested && isFileNotMapped(*inner)) {
            return true;
        }
    }
    return false;
}

bool InformationFiles::isFileNotMapped(const IUnit &unit) {
    if (isObservedFromElsewhere(unit)) {
        return true;
    }
    const auto *const subsystem = dynamic_cast<const ISubsystem *>(&unit);
    return subsystem != nullptr && isShownInFileOfItsName(*subsystem);
}

bool InformationFiles::isObservedFromElsewhere(const IUnit &unit) const {
    IFileList files;
    IFile::GetFilesObserveObject(&unit, files);
    const auto *const classifier = dynamic_cast<const IClassifier *>(&unit);
    return std::ranges::any_of(files, [&](const IFile *file) {
        const bool isOwnFile = classifier != nullptr && !component_->isOwnedByMe(file) &&
                               dynamic_cast<const IClassifier *>(file->getOwner()) == classifier;
        const IUnit *const keptWith = file->getSaveUnit();
        return !isOwnFile && keptWith != nullptr && keptWith != unit.getSaveUnit();
    });
}

bool InformationFiles::isShownInFileOfItsName(const ISubsystem &subsystem) {
    if (!shown_) {
        shown_.emplace();
        IRecursiveIterator<IDObject, IAggregatesIterator> objects(component_, 0);
        for (const IDObject *object = objects.first(); object != nullptr; object = objects.next()) {
            if (const auto *const file = dynamic_cast<const IFile *>(object)) {
                addShownBy(*file);
            }
        }
    }
    return shown_->contains(&subsystem);
}

void InformationFiles::addShownBy(const IFile &file) {
    if (file.getSaveUnit() == nullptr) {
        return; // required: any save unit counts, even the subsystem's own
    }
    const CString name = file.getName();
    IFileFragmentIterator fragments;
    file.iteratorFragments(fragments, 1);
    for (const IFileFragment *fragment = fragments.first(); fragment != nullptr; fragment = fragments.next()) {
        const IDObject *const element = fragment->getElement();
        const ISubsystem *const subsystem = element == nullptr ? nullptr : subsystemOf(*element);
        if (subsystem != nullptr && subsystem->getName() == name) {
            shown_->insert(subsystem);
        }
    }
}

bool shouldSetInformationFilesCheckBox(IUnit *unit) { return InformationFiles().holdFor(unit); }

bool shouldSetInformationFilesCheckBoxForUnitsList(CMArchiveItemList &items) {
    InformationFiles rule;
    return std::ranges::any_of(items, [&rule](const CMArchiveItem *item) {
        return item != nullptr && rule.holdFor(IUnit::getByFile(item->getFileNameForRepFiles()));
    });
}

bool shouldSetInformationFilesCheckBoxForUnitsList2(CMUnitList &units) {
    InformationFiles rule;
    return std::ranges::any_of(units, [&rule](const IUnit *unit) { return rule.holdFor(unit); });
}
