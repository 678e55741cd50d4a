// Holds the data of a model element in the reference host. The object that the library sees is both an Element and
// one of the host's interfaces (see ElementObject.h).
#pragma once

#include "CM/host/IDObject.h"
#include "CM/host/OrId.h"
#include "orchard/model/ElementId.h"
#include "orchard/model/ElementKind.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace orchard {

class HandleSlot;
class Model;
class PropertyTable;
class UnitElement;

class Element {
  public:
    explicit Element(Kind kind);
    virtual ~Element();
    Element(const Element &) = delete;
    Element &operator=(const Element &) = delete;

    /// Convert between the element and the object that the library sees. of() returns null for null.
    [[nodiscard]] virtual IDObject &object() = 0;
    [[nodiscard]] const IDObject &object() const { return const_cast<Element *>(this)->object(); }
    [[nodiscard]] static Element *of(const IDObject *object);

    [[nodiscard]] Kind kind() const { return kind_; }
    [[nodiscard]] const ElementId &id() const { return id_; }
    [[nodiscard]] const std::string &name() const { return name_; }
    [[nodiscard]] Element *owner() const { return owner_; }
    [[nodiscard]] Model *model() const { return model_; }
    [[nodiscard]] const std::vector<std::unique_ptr<Element>> &children() const { return children_; }
    /// This element as a unit, or null.
    [[nodiscard]] virtual UnitElement *asUnit() { return nullptr; }
    [[nodiscard]] const UnitElement *asUnit() const { return const_cast<Element *>(this)->asUnit(); }

    // Rarely used data, stored separately.
    [[nodiscard]] std::string_view type() const;
    [[nodiscard]] std::string_view description() const;
    /// For a fragment: the element that it represents.
    [[nodiscard]] ElementId standsFor() const;
    /// On a configuration: whether it keeps code respect information.
    [[nodiscard]] bool respectMode() const;
    void setType(std::string_view type);
    void setDescription(std::string_view description);
    void setStandsFor(const ElementId &id);
    void setRespectMode(bool respect);

    /// The properties set on the element itself; properties() returns null if there are none.
    [[nodiscard]] PropertyTable *properties() const { return properties_.get(); }
    [[nodiscard]] PropertyTable &makeProperties();
    void setProperties(std::unique_ptr<PropertyTable> properties);

    // Building: these update no index, mark nothing as modified and notify nobody (Model has the functions that
    // do).
    void setId(const ElementId &id) { id_ = id; }
    void setName(std::string_view name) { name_ = name; }
    void setModel(Model *model) { model_ = model; }
    /// Sets the owner of an element that is not yet among the owner's children.
    void setOwner(Element *owner) { owner_ = owner; }
    /// Adds at the end, or before the child at `index`.
    Element &addChild(std::unique_ptr<Element> child, std::size_t index = static_cast<std::size_t>(-1));
    /// Removes a child and returns it to the caller, who then owns it. Linear in the number of children.
    [[nodiscard]] std::unique_ptr<Element> takeChild(const Element &child);
    [[nodiscard]] std::unique_ptr<Element> takeChild(std::size_t index);
    /// Removes many children at once and returns them in order, with their former indexes; linear in the number of
    /// children.
    struct Placed {
        std::size_t index;
        std::unique_ptr<Element> element;
    };
    [[nodiscard]] std::vector<Placed> takeChildren(const std::unordered_set<const Element *> &which);
    /// Reverses takeChildren(): each child gets its index back, and the others keep their order around them.
    void putChildren(std::vector<Placed> placed);
    /// Replaces a child and returns the old one, which the caller then owns.
    [[nodiscard]] std::unique_ptr<Element> replaceChild(std::size_t index, std::unique_ptr<Element> child);
    /// Returns the number of children if `child` is not one of them. Fast if children are looked up in order;
    /// otherwise linear.
    [[nodiscard]] std::size_t indexOf(const Element &child) const;
    /// Moves all children to `other`, whose own children are deleted.
    void giveChildrenTo(Element &other);
    /// Takes over the data of `other` (name, texts, properties), but not its owner or children.
    void takeFacts(Element &other);

    // Implementation of the host's interface.
    [[nodiscard]] UnitElement *saveUnit() const;
    [[nodiscard]] bool owns(const Element &other) const;
    [[nodiscard]] IHandle *makeHandle();
    [[nodiscard]] bool modified() const { return modified_; }
    /// Setting the flag also sets it on the unit that contains the element; clearing affects only this element.
    void setModified(bool modified);
    /// Reports a change of content: marks the unit as modified and notifies the observers.
    void changed();
    [[nodiscard]] IProperty *findProperty(std::string_view subject, std::string_view metaclass,
                                          std::string_view key, int where) const;
    [[nodiscard]] IProperty *findOwnProperty(std::string_view subject, std::string_view metaclass,
                                             std::string_view key) const;
    void storeProperty(std::string_view subject, std::string_view metaclass, const IProperty *property);

    /// The slot shared by all handles to the element; null if there are none.
    [[nodiscard]] HandleSlot *slot() const { return slot_; }
    void setSlot(HandleSlot *slot) { slot_ = slot; }

  private:
    struct Details;
    Details &details();

    const Kind kind_;
    bool modified_ = false;
    ElementId id_;
    Element *owner_ = nullptr;
    Model *model_ = nullptr;
    HandleSlot *slot_ = nullptr;
    std::string name_;
    std::vector<std::unique_ptr<Element>> children_;
    std::unique_ptr<Details> details_;
    std::unique_ptr<PropertyTable> properties_;
};

/// Calls `visit` on the element and on everything below it, owners first, in model order. Does not recurse, so a
/// deep model needs no extra stack.
template <class ELEMENT, class VISIT> void visitSubtree(ELEMENT &root, VISIT &&visit) {
    std::vector<ELEMENT *> open{&root};
    while (!open.empty()) {
        ELEMENT &element = *open.back();
        open.pop_back();
        const auto &children = element.children();
        const std::size_t first = open.size();
        open.resize(first + children.size());
        for (std::size_t at = 0; at < children.size(); ++at) {
            open[open.size() - 1 - at] = children[at].get();
        }
        visit(element);
    }
}

/// Creates an element of the kind, with the interface that belongs to it.
[[nodiscard]] std::unique_ptr<Element> makeElement(Kind kind);

} // namespace orchard
