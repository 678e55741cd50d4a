// Holds the open projects, the active project and the observers of changes.
#pragma once

#include "CM/host/CurrentWorkspace.h"
#include "orchard/model/Model.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orchard {

class WorkspaceObject;

class Workspace {
  public:
    [[nodiscard]] static Workspace &instance();

    Model &add(std::unique_ptr<Model> model, bool activate);
    /// Closes and destroys a project. If it was active, the project opened before it becomes active, or else the
    /// one opened after it.
    void close(Model &model);
    void activate(Model &model) { active_ = &model; }
    [[nodiscard]] Model *active() const { return active_; }
    [[nodiscard]] const std::vector<std::unique_ptr<Model>> &models() const { return models_; }
    [[nodiscard]] IWorkspace *object() const;

    /// The file of a reloaded unit, with the project that contains it.
    struct SavedUnit {
        const Model *model;
        std::string file;
    };
    void noteSavedUnit(const UnitElement &unit);
    [[nodiscard]] std::vector<SavedUnit> takeSavedUnits();
    [[nodiscard]] std::size_t savedUnitCount() const { return savedUnits_.size(); }

    /// If set, gets each renaming of a unit's file that is asked for, with the new file name; the unit keeps its
    /// file until the receiver carries the renaming out.
    std::function<void(UnitElement &unit, const std::string &fileName)> takeRenaming;

    using Observer = std::function<void(IDObject &)>;
    /// Observers are notified of every change of an element; forget() with the returned number removes the
    /// observer.
    int observe(Observer observer);
    void forget(int number);
    void noteChange(IDObject &object);

    /// The number of changes that count for code generation, since the start.
    [[nodiscard]] std::size_t codeChanges() const { return codeChanges_; }
    void ignoreCodeChanges(int step) { ignoring_ += step; }

  private:
    Workspace();
    ~Workspace();

    std::vector<std::unique_ptr<Model>> models_;
    Model *active_ = nullptr;
    std::unique_ptr<Element> object_;
    std::vector<SavedUnit> savedUnits_;
    std::vector<std::pair<int, Observer>> observers_;
    int nextObserver_ = 1;
    int ignoring_ = 0;
    std::size_t codeChanges_ = 0;
};

} // namespace orchard
