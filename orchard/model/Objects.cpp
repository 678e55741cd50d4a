#include "CM/host/Iterators.h"
#include "CM/host/Utilities.h"
#include "orchard/model/ElementObject.h"
#include "orchard/model/Model.h"
#include "orchard/model/Workspace.h"

#include <sys/stat.h>

namespace orchard {

namespace {

class ProjectObject final : public UnitObject<IProject> {
  public:
    ProjectObject() : UnitObject(Kind::project) {}
    [[nodiscard]] IComponent *getComponent() const override {
        UnitElement *const component = model() == nullptr ? nullptr : model()->component();
        return component == nullptr ? nullptr : static_cast<IComponent *>(&component->unit());
    }
    [[nodiscard]] IComponent *doGetComponent() const override { return getComponent(); }
    [[nodiscard]] ICodeGenConfigInfo *getConfiguration() const override {
        const UnitElement *const component = model() == nullptr ? nullptr : model()->component();
        Element *const configuration = component == nullptr ? nullptr : model()->configurationOf(*component);
        return configuration == nullptr ? nullptr : static_cast<ICodeGenConfigInfo *>(&configuration->object());
    }
    [[nodiscard]] CString getProjectFileDirectory() const override {
        return model() == nullptr ? CString() : CString(model()->projectDirectory());
    }
    [[nodiscard]] bool showCMStatus(bool /*usingTSV*/) const override {
        const IProperty *const show =
            findProperty("ConfigurationManagement", "General", "ShowCMStatus", 0, 1, 0, 0, 1, 0, 0);
        return show != nullptr && show->getBool();
    }
};

class SubsystemObject final : public UnitObject<ISubsystem> {
  public:
    SubsystemObject() : UnitObject(Kind::subsystem) {}
    [[nodiscard]] bool isHiddenFromCM() const override { return is(hiddenFromCM); }
};

class ClassObject final : public UnitObject<IClass> {
  public:
    ClassObject() : UnitObject(Kind::classKind) {}
    [[nodiscard]] bool isTopLevel() const override {
        return owner() != nullptr && owner()->kind() == Kind::subsystem;
    }
};

class ComponentObject final : public UnitObject<IComponent> {
  public:
    ComponentObject() : UnitObject(Kind::component) {}
    [[nodiscard]] ICodeGenConfigInfo *DoGetActiveConfig() const override {
        Element *const configuration = model() == nullptr ? nullptr : model()->configurationOf(*this);
        return configuration == nullptr ? nullptr : static_cast<ICodeGenConfigInfo *>(&configuration->object());
    }
};

class FileObject final : public UnitObject<IFile> {
  public:
    FileObject() : UnitObject(Kind::file) {}
    void iteratorFragments(IFileFragmentIterator &iterator, int recursive) const override {
        std::vector<IFileFragment *> found;
        visitSubtree<const Element>(*this, [&](const Element &element) {
            if (element.kind() == Kind::fragment && (recursive != 0 || element.owner() == this)) {
                found.push_back(static_cast<IFileFragment *>(const_cast<IDObject *>(&element.object())));
            }
        });
        iterator.assign(std::move(found));
    }
};

class EmbeddedFileObject final : public UnitObject<IEmbededFile> {
  public:
    EmbeddedFileObject() : UnitObject(Kind::embedded) {}
    [[nodiscard]] bool IsTargetReadOnly() const override {
        struct stat state {};
        return ::stat(fullFileName().c_str(), &state) == 0 && (state.st_mode & S_IWUSR) == 0;
    }
    [[nodiscard]] CString getEmbeddedFileName() const override { return fileName(); }
};

class ConfigurationObject final : public ElementObject<ICodeGenConfigInfo, Element> {
  public:
    ConfigurationObject() : ElementObject(Kind::configuration) {}
    [[nodiscard]] bool isRespectMode() const override { return respectMode(); }
};

class FragmentObject final : public ElementObject<IFileFragment, Element> {
  public:
    FragmentObject() : ElementObject(Kind::fragment) {}
    [[nodiscard]] IDObject *getElement() const override {
        Element *const element = model() == nullptr ? nullptr : model()->find(standsFor());
        return element == nullptr ? nullptr : &element->object();
    }
};

class WorkspaceUnit final : public UnitObject<IWorkspace> {
  public:
    WorkspaceUnit() : UnitObject(Kind::workspace) {}
    void AddToSavedUnitsList(IUnit *unit) override {
        if (const Element *const element = Element::of(unit); element != nullptr) {
            Workspace::instance().noteSavedUnit(*element->asUnit());
        }
    }
};

} // namespace

std::unique_ptr<Element> makeElement(Kind kind) {
    switch (kind) {
    case Kind::project:
        return std::make_unique<ProjectObject>();
    case Kind::subsystem:
        return std::make_unique<SubsystemObject>();
    case Kind::classKind:
        return std::make_unique<ClassObject>();
    case Kind::component:
        return std::make_unique<ComponentObject>();
    case Kind::file:
        return std::make_unique<FileObject>();
    case Kind::embedded:
        return std::make_unique<EmbeddedFileObject>();
    case Kind::workspace:
        return std::make_unique<WorkspaceUnit>();
    case Kind::configuration:
        return std::make_unique<ConfigurationObject>();
    case Kind::fragment:
        return std::make_unique<FragmentObject>();
    case Kind::attribute:
    case Kind::operation:
        break;
    }
    return std::make_unique<ElementObject<IDObject, Element>>(kind);
}

} // namespace orchard
