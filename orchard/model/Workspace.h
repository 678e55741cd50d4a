// The open projects, which of them is active, and who hears of changes.
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
    /// Takes a project out and down. If it was the active one, the one opened before it becomes active.
    void close(Model &model);
    void activate(Model &model) { active_ = &model; }
    [[nodiscard]] Model *active() const { return active_; }
    [[nodiscard]] const std::vector<std::unique_ptr<Model>> &models() const { return models_; }
    [[nodiscard]] IWorkspace *object() const;

    /// The files of units that were reloaded, with the project in which that was.
    struct SavedUnit {
        const Model *model;
        std::string file;
    };
    void noteSavedUnit(const UnitElement &unit);
    [[nodiscard]] std::vector<SavedUnit> takeSavedUnits();
    [[nodiscard]] std::size_t savedUnitCount() const { return savedUnits_.size(); }

    using Observer = std::function<void(IDObject &)>;
    /// Observers are told of every change of an element; the number takes the observer away again.
    int observe(Observer observer);
    void forget(int number);
    void noteChange(IDObject &object);

    /// Changes that count for code generation, since the start.
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
