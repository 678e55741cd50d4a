// Lists and iterators over model objects. first() and next() return null at the end. An iterator walks what the
// list or the object held when it was made.
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

/// The common part of the iterators: a walk over pointers taken at the start.
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
    /// Sets the iterator on other objects.
    void assign(std::vector<OBJECT *> objects) {
        objects_ = std::move(objects);
        at_ = 0;
    }

  private:
    [[nodiscard]] OBJECT *current() const { return at_ < objects_.size() ? objects_[at_] : nullptr; }

    std::vector<OBJECT *> objects_;
    std::size_t at_ = 0;
};

/// The units of a list of objects; others are passed over.
class ORC_HOST_API IUnitIterator : public IObIterator<IUnit> {
  public:
    explicit IUnitIterator(const IObjectList &objects);
    explicit IUnitIterator(const IUnitList &units);
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

/// Walks the whole subtree below an object, owners before what they own, with an iterator of one level.
template <class LEVEL> class IRecursiveIterator : public IObIterator<IDObject> {
  public:
    explicit IRecursiveIterator(const IDObject *root) {
        std::vector<IDObject *> found;
        std::vector<const IDObject *> open{root};
        while (!open.empty()) {
            const IDObject *const object = open.back();
            open.pop_back();
            LEVEL level(object, 0);
            std::vector<IDObject *> inside;
            for (IDObject *inner = level.first(); inner != nullptr; inner = level.next()) {
                inside.push_back(inner);
            }
            if (object != root) {
                found.push_back(const_cast<IDObject *>(object));
            }
            open.insert(open.end(), inside.rbegin(), inside.rend());
        }
        assign(std::move(found));
    }
};
