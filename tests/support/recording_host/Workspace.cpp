// Implements the queries about what is open and about the model.
#include "CM/host/CurrentWorkspace.h"

#include "tests/support/recording_host/RecordingHost.h"

#include <algorithm>

namespace {

recording::ModelState &model() { return RecordingHost::current().model; }

} // namespace

IProject *CurrentWorkspace::GetActiveProject() { return model().activeProject; }
CurrentWorkspace *CurrentWorkspace::Workspace() {
    static CurrentWorkspace workspace; // holds nothing
    return model().hasWorkspace ? &workspace : nullptr;
}
IWorkspace *CurrentWorkspace::getWorkspace() const { return model().workspace; }
void CurrentWorkspace::ApplySavedUnitsListToNonActiveProjects() {
    RecordingHost::current().note("apply saved units");
    if (auto *const workspace = dynamic_cast<recording::Workspace *>(model().workspace)) {
        workspace->savedUnits.clear();
    }
}
CurrentProject *CurrentProject::Project() {
    static CurrentProject project; // holds nothing
    return model().projectIsOpen.value_or(model().activeProject != nullptr) ? &project : nullptr;
}

IUnit *IUnit::getByFile(const CString &path) {
    model().filesAskedFor.push_back(path);
    for (IDObject *const object : model().repositoryFiles) {
        auto *const unit = dynamic_cast<IUnit *>(object);
        if (unit != nullptr && unit->getNameForReposFiles() == path) {
            return unit;
        }
    }
    return nullptr;
}
IObjectList *IUnit::getRepositoryFiles() {
    return model().hasRepositoryFiles ? &model().repositoryFiles : nullptr;
}
bool IUnit::isFullPathRepFiles() { return model().fullPathRepFiles; }

bool IEmbededFile::IsEmbededFile(const CString &name) {
    const int dot = name.ReverseFind('.');
    return dot >= 0 && std::ranges::count(model().embeddedExtensions, name.Mid(dot)) > 0;
}

void IFile::GetFilesObserveObject(const IDObject *object, IFileList &files) {
    for (IDObject *const candidate : model().repositoryFiles) {
        auto *const file = dynamic_cast<recording::File *>(candidate);
        if (file != nullptr && std::ranges::count(file->observed, object) > 0) {
            files.AddTail(file);
        }
    }
}

namespace recording {

namespace {

void collectFragments(const std::vector<IDObject *> &objects, bool recursive,
                      std::vector<IFileFragment *> &found) {
    for (IDObject *const object : objects) {
        if (auto *const fragment = dynamic_cast<Fragment *>(object)) {
            found.push_back(fragment);
            if (recursive) {
                collectFragments(fragment->inside, true, found);
            }
        }
    }
}

} // namespace

void File::iteratorFragments(IFileFragmentIterator &iterator, int recursive) const {
    std::vector<IFileFragment *> found;
    collectFragments(inside, recursive != 0, found);
    iterator.assign(std::move(found));
}

void Workspace::AddToSavedUnitsList(IUnit *unit) {
    RecordingHost::current().note("add to saved units " + (unit == nullptr ? CString("none") : unit->getName()));
    savedUnits.push_back(unit);
}

} // namespace recording
