// Implements the static functions of the host's interface: what is open, and the names of the unit kinds.
#include "CM/host/CurrentWorkspace.h"
#include "CM/host/Iterators.h"
#include "orchard/model/Paths.h"
#include "orchard/model/Workspace.h"

using orchard::Element;
using orchard::Kind;
using orchard::Model;
using orchard::traitsOf;
using orchard::UnitElement;
using orchard::Workspace;

IProject *CurrentWorkspace::GetActiveProject() {
    Model *const model = Workspace::instance().active();
    return model == nullptr ? nullptr : &model->projectObject();
}

CurrentWorkspace *CurrentWorkspace::Workspace() {
    static CurrentWorkspace workspace;
    return &workspace;
}

IWorkspace *CurrentWorkspace::getWorkspace() const { return Workspace::instance().object(); }

CurrentProject *CurrentProject::Project() {
    static CurrentProject project;
    return Workspace::instance().active() == nullptr ? nullptr : &project;
}

IUnit *IUnit::getByFile(const CString &path) {
    const Model *const model = Workspace::instance().active();
    UnitElement *const unit = model == nullptr ? nullptr : model->findByFile(path);
    return unit == nullptr ? nullptr : &unit->unit();
}

IObjectList *IUnit::getRepositoryFiles() {
    static IObjectList none;
    Model *const model = Workspace::instance().active();
    return model == nullptr ? &none : &model->repositoryFiles();
}

bool IUnit::isFullPathRepFiles() { return true; }

bool IProject::isUsingTSV() { return false; }

CString IProject::fileExtension2UnitType(const CString &extension) {
    const auto kind = orchard::kindWithExtension(extension);
    return kind ? CString(traitsOf(*kind).displayName) : CString();
}

CString IProject::staticGetNewFileExtension() { return traitsOf(Kind::project).extension; }
CString IProject::staticGetOldFileExtension() { return traitsOf(Kind::project).oldExtension; }
CString IProject::staticGetFolderExtension() { return traitsOf(Kind::project).extension; }
CString IFolder::staticGetNewFileExtension() { return traitsOf(Kind::subsystem).extension; }
CString IFolder::staticGetOldFileExtension() { return traitsOf(Kind::subsystem).oldExtension; }
CString IComponent::staticGetNewFileExtension() { return traitsOf(Kind::component).extension; }
CString IComponent::staticGetOldFileExtension() { return traitsOf(Kind::component).oldExtension; }
CString IFile::staticGetNewFileExtension() { return traitsOf(Kind::file).extension; }
CString IFile::staticGetOldFileExtension() { return traitsOf(Kind::file).oldExtension; }
CString IFile::usrClassName() { return traitsOf(Kind::file).displayName; }

void IFile::GetFilesObserveObject(const IDObject *object, IFileList &files) {
    const Element *const element = Element::of(object);
    if (element == nullptr || element->model() == nullptr) {
        return;
    }
    for (UnitElement *const file : element->model()->filesObserving(element->id())) {
        files.AddTail(static_cast<IFile *>(&file->unit()));
    }
}

bool IEmbededFile::IsEmbededFile(const CString &name) {
    const Model *const model = Workspace::instance().active();
    if (const UnitElement *const unit = model == nullptr ? nullptr : model->findByFile(name)) {
        return unit->kind() == Kind::embedded;
    }
    // A file that is not in the model cannot be a unit's file if no unit kind has its extension.
    return !name.IsEmpty() && !orchard::kindWithExtension(orchard::extensionOf(name));
}

INObject::IgnoreCGModification::IgnoreCGModification() { Workspace::instance().ignoreCodeChanges(1); }
INObject::IgnoreCGModification::~IgnoreCGModification() { Workspace::instance().ignoreCodeChanges(-1); }
