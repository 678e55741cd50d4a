// What the reference host keeps of every model element. The object that the library sees is an Element and one of
// the host's interfaces at once (see ElementObject.h).
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

    /// The same object as the library sees it, and back; null for null.
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

    // What few elements have, kept aside.
    [[nodiscard]] std::string_view type() const;
    [[nodiscard]] std::string_view description() const;
    /// On a fragment: the element that it stands for.
    [[nodiscard]] ElementId standsFor() const;
    /// On a configuration: whether it keeps code respect information.
    [[nodiscard]] bool respectMode() const;
    void setType(std::string_view type);
    void setDescription(std::string_view description);
    void setStandsFor(const ElementId &id);
    void setRespectMode(bool respect);

    /// The properties set on the element itself; the first form gives null if there are none.
    [[nodiscard]] PropertyTable *properties() const { return properties_.get(); }
    [[nodiscard]] PropertyTable &makeProperties();
    void setProperties(std::unique_ptr<PropertyTable> properties);

    // Building: these touch no index, mark nothing as modified and tell nobody (see Model for those that do).
    void setId(const ElementId &id) { id_ = id; }
    void setName(std::string_view name) { name_ = name; }
    void setModel(Model *model) { model_ = model; }
    /// For an element that is to stand in `owner` but is not among its children yet.
    void setOwner(Element *owner) { owner_ = owner; }
    /// Adds at the end, or in front of the child at `index`.
    Element &addChild(std::unique_ptr<Element> child, std::size_t index = static_cast<std::size_t>(-1));
    /// Takes a child out; it is then owned by the caller. Linear in the number of children.
    [[nodiscard]] std::unique_ptr<Element> takeChild(const Element &child);
    [[nodiscard]] std::unique_ptr<Element> takeChild(std::size_t index);
    /// Many children at once, with the indexes that they had, in order; linear in the number of children.
    struct Placed {
        std::size_t index;
        std::unique_ptr<Element> element;
    };
    [[nodiscard]] std::vector<Placed> takeChildren(const std::unordered_set<const Element *> &which);
    /// The reverse: afterwards each has its index, and the others stand around them in their order.
    void putChildren(std::vector<Placed> placed);
    /// Puts a child in the place of another one, which is then owned by the caller.
    [[nodiscard]] std::unique_ptr<Element> replaceChild(std::size_t index, std::unique_ptr<Element> child);
    /// Quick when children are asked for one after the other; else linear. The number of children if it is none.
    [[nodiscard]] std::size_t indexOf(const Element &child) const;
    /// Gives all children to `other`, which loses its own.
    void giveChildrenTo(Element &other);
    /// Takes over what is told of the element itself (name, texts, properties), not its place and its children.
    void takeFacts(Element &other);

    // Answers for the host's interface.
    [[nodiscard]] UnitElement *saveUnit() const;
    [[nodiscard]] bool owns(const Element &other) const;
    [[nodiscard]] IHandle *makeHandle();
    [[nodiscard]] bool modified() const { return modified_; }
    /// Also marks the unit that holds the element; clearing touches this element only.
    void setModified(bool modified);
    /// Notes a change of content: marks the unit as modified and tells the observers.
    void changed();
    [[nodiscard]] IProperty *findProperty(std::string_view subject, std::string_view metaclass,
                                          std::string_view key, int where) const;
    [[nodiscard]] IProperty *findOwnProperty(std::string_view subject, std::string_view metaclass,
                                             std::string_view key) const;
    void storeProperty(std::string_view subject, std::string_view metaclass, const IProperty *property);

    /// What handles to the element point at; null if there are none.
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

/// Calls `visit` on the element and on all below it, owners first, in model order. Depth costs no stack.
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

/// A new element of the kind, with the interface that belongs to it.
[[nodiscard]] std::unique_ptr<Element> makeElement(Kind kind);

} // namespace orchard
