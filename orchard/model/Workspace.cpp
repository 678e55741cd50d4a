#include "orchard/model/Workspace.h"

#include "orchard/model/PatternOrigin.h"
#include "orchard/model/Undo.h"
#include "orchard/properties/PropertyData.h"

#include <algorithm>

namespace orchard {

Workspace &Workspace::instance() {
    // Never destroyed: the end of the process frees a large model far faster than destructors would.
    static Workspace &workspace = *new Workspace;
    return workspace;
}

namespace {

/// Stores a value set on a property of an installed set, which all projects share, in the active project.
bool keepInProject(const std::string &subject, const std::string &metaclass, const IProperty &property,
                   const CString &value) {
    Model *const model = Workspace::instance().active();
    if (model == nullptr) {
        return false;
    }
    IProperty copy(&property);
    copy.setValue(value);
    model->project().storeProperty(subject, metaclass, &copy);
    return true;
}

} // namespace

Workspace::Workspace() : object_(makeElement(Kind::workspace)) {
    object_->setName("Workspace");
    setInstalledChangeHandler(keepInProject);
    reportPatternsWithTheirOrigin();
}

Workspace::~Workspace() = default;

IWorkspace *Workspace::object() const { return static_cast<IWorkspace *>(&object_->object()); }

Model &Workspace::add(std::unique_ptr<Model> model, bool activate) {
    Model &added = *models_.emplace_back(std::move(model));
    if (activate || active_ == nullptr) {
        active_ = &added;
    }
    return added;
}

void Workspace::close(Model &model) {
    const auto found = std::ranges::find(models_, &model, [](const auto &open) { return open.get(); });
    if (found == models_.end()) {
        return;
    }
    const std::unique_ptr<Model> closing = std::move(*found);
    const auto next = models_.erase(found);
    if (active_ == &model) {
        const bool none = models_.empty();
        active_ = none ? nullptr : (next == models_.begin() ? next->get() : std::prev(next)->get());
    }
    std::erase_if(savedUnits_, [&](const SavedUnit &saved) { return saved.model == &model; });
}

void Workspace::noteSavedUnit(const UnitElement &unit) {
    if (unit.model() != nullptr && unit.hasFile()) {
        savedUnits_.push_back({unit.model(), unit.fullFileName()});
    }
}

std::vector<Workspace::SavedUnit> Workspace::takeSavedUnits() { return std::exchange(savedUnits_, {}); }

int Workspace::observe(Observer observer) {
    observers_.emplace_back(nextObserver_, std::move(observer));
    return nextObserver_++;
}

void Workspace::forget(int number) {
    std::erase_if(observers_, [number](const auto &entry) { return entry.first == number; });
}

void Workspace::noteChange(IDObject &object) {
    if (ignoring_ == 0) {
        ++codeChanges_;
    }
    UndoRecorder::instance().noteChange();
    const auto observers = observers_; // an observer may be added or removed during the calls
    for (const auto &[number, observer] : observers) {
        observer(object);
    }
}

} // namespace orchard
