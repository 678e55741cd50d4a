// One open project: its elements, the indexes over them, and where it stands on disk.
#pragma once

#include "CM/host/IProject.h"
#include "CM/host/Iterators.h"
#include "orchard/model/FileIndex.h"
#include "orchard/model/HandleSlots.h"
#include "orchard/model/IdIndex.h"
#include "orchard/model/UnitElement.h"

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orchard {

/// How units get to disk; the model knows no more of files than this.
class UnitStorage {
  public:
    virtual ~UnitStorage() = default;
    /// Writes a unit whole, or leaves the old file and says why not. A unit's own file is not written over if it
    /// changed since it was last read or saved.
    virtual bool save(UnitElement &unit, const std::string &path, std::string &error) = 0;
    /// Reads the header at the top of the unit's own file, of an embedded file its first lines. False, and
    /// `header` stays, if it can't be read; unless `quietly`, the user is told why, once until it can.
    virtual bool readHeader(const UnitElement &unit, std::string &header, bool quietly) = 0;
};

class Model {
  public:
    /// `projectFile` and `unitsDirectory` are normal full paths.
    Model(std::string projectFile, std::string unitsDirectory, std::unique_ptr<UnitStorage> storage);
    ~Model();
    Model(const Model &) = delete;
    Model &operator=(const Model &) = delete;

    [[nodiscard]] const std::string &projectFile() const { return projectFile_; }
    [[nodiscard]] const std::string &projectDirectory() const { return projectDirectory_; }
    [[nodiscard]] const std::string &unitsDirectory() const { return unitsDirectory_; }
    [[nodiscard]] UnitStorage &storage() { return *storage_; }
    [[nodiscard]] UnitElement &project() { return *project_; }
    [[nodiscard]] const UnitElement &project() const { return *project_; }
    [[nodiscard]] IProject &projectObject() { return static_cast<IProject &>(project_->unit()); }

    /// Who has what an element that wants to enter has, too.
    struct Clash {
        Element *sameId = nullptr;
        UnitElement *sameFile = nullptr;
        explicit operator bool() const { return sameId != nullptr || sameFile != nullptr; }
    };
    /// Takes one element into the indexes; on a clash it stays out of them.
    Clash enter(Element &element);
    void leave(Element &element);
    /// The same for an element and all below it. It must have been seen before that nothing clashes.
    void enterSubtree(Element &root);
    void leaveSubtree(Element &root);

    [[nodiscard]] Element *find(const ElementId &id) const { return ids_.find(id); }
    [[nodiscard]] std::size_t elementCount() const { return ids_.size(); }
    [[nodiscard]] const FileIndex &files() const { return files_; }
    /// By full path, by path relative to the units directory, by bare name if only one unit has it; or null.
    [[nodiscard]] UnitElement *findByFile(std::string_view path) const;
    /// The units of this name, embedded files among them, owners first.
    [[nodiscard]] std::vector<UnitElement *> unitsNamed(std::string_view name) const;
    /// A name has changed.
    void noteName() { namesStand_ = false; }
    /// Everything with a file of its own, owners first.
    [[nodiscard]] IObjectList &repositoryFiles();
    [[nodiscard]] IHandle *handleTo(Element &element) { return slots_.handleTo(element); }
    /// The code files with a fragment for the element, sorted by file name.
    [[nodiscard]] std::vector<UnitElement *> filesObserving(const ElementId &element) const;

    /// Changes of names and places of files, which the indexes have to follow; everything below moves along.
    template <class CHANGE> void changePlaces(const std::vector<UnitElement *> &units, CHANGE &&change) {
        for (UnitElement *const unit : units) {
            takePlaces(*unit, false);
        }
        change();
        for (UnitElement *const unit : units) {
            takePlaces(*unit, true);
        }
    }
    template <class CHANGE> void changePlaces(UnitElement &unit, CHANGE &&change) {
        changePlaces(std::vector<UnitElement *>{&unit}, std::forward<CHANGE>(change));
    }

    ElementId activeComponent;
    ElementId activeConfiguration;
    [[nodiscard]] UnitElement *component() const;
    [[nodiscard]] Element *configurationOf(const UnitElement &component) const;

  private:
    void takePlaces(UnitElement &root, bool in);

    std::string projectFile_;
    std::string projectDirectory_;
    std::string unitsDirectory_;
    std::unique_ptr<UnitStorage> storage_;
    HandleSlots slots_;
    IdIndex ids_;
    FileIndex files_;
    std::set<std::pair<ElementId, Element *>> fragments_;
    IObjectList repositoryFiles_;
    bool repositoryFilesStand_ = false;
    // Made when it is asked for: the units by the hashes of their names, equal ones in model order.
    mutable std::vector<std::pair<std::size_t, UnitElement *>> names_;
    mutable bool namesStand_ = false;
    std::unique_ptr<UnitElement> project_;
};

} // namespace orchard
