// Iterates over model objects. first() and next() return null at the end. An iterator visits the objects that the
// list or the owner held when the iterator was made.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/host/IProject.h"
#include "CM/platform/CList.h"

#include <cstddef>
#include <utility>
#include <vector>

class IObjectList : public CList<IDObject *, IDObject *> {};
class IUnitList : public CList<IUnit *, IUnit *> {};
class IFileList : public CList<IFile *, IFile *> {};
class IHandleList : public CList<IHandle *, IHandle *> {};

/// The common part of the iterators: visits pointers that were copied at the start.
template <class OBJECT> class IObIterator {
  public:
    IObIterator() = default;
    explicit IObIterator(std::vector<OBJECT *> objects) : objects_(std::move(objects)) {}
    OBJECT *first() {
        at_ = 0;
        return current();
    }
    OBJECT *next() {
        ++at_;
        return current();
    }
    /// Sets the iterator to other objects.
    void assign(std::vector<OBJECT *> objects) {
        objects_ = std::move(objects);
        at_ = 0;
    }

  private:
    [[nodiscard]] OBJECT *current() const { return at_ < objects_.size() ? objects_[at_] : nullptr; }

    std::vector<OBJECT *> objects_;
    std::size_t at_ = 0;
};

/// The units of a list of objects; others are skipped. Callers leave `flag` at 0.
class ORC_HOST_API IUnitIterator : public IObIterator<IUnit> {
  public:
    explicit IUnitIterator(const IObjectList &objects, int flag = 0);
    explicit IUnitIterator(const IUnitList &units, int flag = 0);
};

class ORC_HOST_API IFileIterator : public IObIterator<IFile> {
  public:
    explicit IFileIterator(const IFileList &files);
};

class ORC_HOST_API IFileFragmentIterator : public IObIterator<IFileFragment> {
  public:
    using IObIterator::IObIterator;
};

/// The unit itself and the units directly inside it.
class ORC_HOST_API IUnitAggregatesIterator : public IObIterator<IUnit> {
  public:
    IUnitAggregatesIterator(const IUnit *unit, int flag);
};

/// The elements directly inside an object.
class ORC_HOST_API IAggregatesIterator : public IObIterator<IDObject> {
  public:
    IAggregatesIterator(const IDObject *object, int flag);
};

/// Visits the complete subtree below an object, owners before their parts, with an iterator for one level. With
/// flag 1 the object itself is first, with 0 it is left out. A null root has no objects.
template <class OBJECT, class LEVEL> class IRecursiveIterator : public IObIterator<OBJECT> {
  public:
    explicit IRecursiveIterator(const OBJECT *root, int flag = 0) {
        std::vector<OBJECT *> found;
        std::vector<OBJECT *> open;
        if (root != nullptr) {
            open.push_back(const_cast<OBJECT *>(root)); // iterators give out objects that can be changed
        }
        while (!open.empty()) {
            OBJECT *const object = open.back();
            open.pop_back();
            if (object != root || flag != 0) {
                found.push_back(object);
            }
            LEVEL level(object, 0);
            std::vector<OBJECT *> inside;
            for (OBJECT *inner = level.first(); inner != nullptr; inner = level.next()) {
                if (inner != object) { // an iterator of one level may begin with the object itself
                    inside.push_back(inner);
                }
            }
            open.insert(open.end(), inside.rbegin(), inside.rend());
        }
        this->assign(std::move(found));
    }
};
