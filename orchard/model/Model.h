// Holds one open project: its elements, the indexes over them, and its location on disk.
#pragma once

#include "CM/host/IProject.h"
#include "CM/host/Iterators.h"
#include "orchard/model/FileIndex.h"
#include "orchard/model/HandleSlots.h"
#include "orchard/model/UnitElement.h"

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orchard {

/// Reads and writes unit files; this is all that the model knows about files.
class UnitStorage {
  public:
    virtual ~UnitStorage() = default;
    /// Writes a unit completely, or leaves the old file as it was and returns the reason in `error`. Does not
    /// overwrite a unit's own file if it changed since it was last read or saved.
    virtual bool save(UnitElement &unit, const std::string &path, std::string &error) = 0;
    /// Reads the header at the top of the unit's own file; for an embedded file, its first lines. If it can't be
    /// read, returns false and leaves `header` unchanged; unless `quietly`, also tells the user the reason, but
    /// only once until the header can be read again.
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

    /// The elements that already have the identifier or the file of an element to be added.
    struct Clash {
        Element *sameId = nullptr;
        UnitElement *sameFile = nullptr;
        explicit operator bool() const { return sameId != nullptr || sameFile != nullptr; }
    };
    /// Adds one element to the indexes, unless it clashes.
    Clash enter(Element &element);
    void leave(Element &element);
    /// Adds an element and everything below it. The caller must have checked that nothing clashes.
    void enterSubtree(Element &root);
    void leaveSubtree(Element &root);

    [[nodiscard]] Element *find(const ElementId &id) const;
    [[nodiscard]] std::size_t elementCount() const { return ids_.size(); }
    [[nodiscard]] const FileIndex &files() const { return files_; }
    /// Finds a unit by full path, by path relative to the units directory, or by bare name if only one unit has
    /// it; else returns null.
    [[nodiscard]] UnitElement *findByFile(std::string_view path) const;
    /// The units with this name, including embedded files, owners first.
    [[nodiscard]] std::vector<UnitElement *> unitsNamed(std::string_view name) const;
    /// Call when a name has changed.
    void noteName() { namesValid_ = false; }
    /// Everything with a file of its own, owners first.
    [[nodiscard]] IObjectList &repositoryFiles();
    [[nodiscard]] IHandle *handleTo(Element &element) { return slots_.handleTo(element); }
    /// The code files with a fragment for the element, sorted by file name.
    [[nodiscard]] std::vector<UnitElement *> filesObserving(const ElementId &element) const;

    /// Applies a change of the names or places of files and updates the indexes for the units and everything below
    /// them.
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
    std::unordered_map<ElementId, Element *> ids_;
    FileIndex files_;
    std::set<std::pair<ElementId, Element *>> fragments_;
    IObjectList repositoryFiles_;
    bool repositoryFilesValid_ = false;
    // Built on first use: the units by the hashes of their names; units with equal hashes are in model order.
    mutable std::vector<std::pair<std::size_t, UnitElement *>> names_;
    mutable bool namesValid_ = false;
    std::unique_ptr<UnitElement> project_;
};

} // namespace orchard
