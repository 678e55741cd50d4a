#include "orchard/model/ModelView.h"

#include "orchard/model/Model.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyTable.h"

#include <algorithm>

namespace orchard {

std::string pathInModel(const IDObject &object) {
    const Element *element = Element::of(&object);
    if (element->owner() == nullptr) {
        return element->name();
    }
    std::vector<const std::string *> names;
    for (; element->owner() != nullptr; element = element->owner()) {
        names.push_back(&element->name());
    }
    std::string path;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        path += path.empty() ? "" : "/";
        path += **name;
    }
    return path;
}

IProject *projectOf(const IDObject &object) {
    const Element *const element = Element::of(&object);
    return element->model() == nullptr ? nullptr : &element->model()->projectObject();
}

std::string typeOf(const IDObject &object) { return std::string(Element::of(&object)->type()); }

std::string descriptionOf(const IDObject &object) { return std::string(Element::of(&object)->description()); }

std::vector<IDObject *> elementsInside(const IDObject &object) {
    std::vector<IDObject *> inside;
    for (const auto &child : Element::of(&object)->children()) {
        inside.push_back(&child->object());
    }
    return inside;
}

void setName(IDObject &object, std::string_view name) {
    Element &element = *Element::of(&object);
    if (element.name() != name && !name.empty()) {
        element.setName(name);
        if (element.model() != nullptr) {
            element.model()->noteName();
        }
        element.changed();
    }
}

void setDescription(IDObject &object, std::string_view description) {
    Element &element = *Element::of(&object);
    if (element.description() != description) {
        element.setDescription(description);
        element.changed();
    }
}

bool removeProperty(IDObject &object, std::string_view subject, std::string_view metaclass, std::string_view key) {
    Element &element = *Element::of(&object);
    if (element.properties() == nullptr || !element.makeProperties().remove(subject, metaclass, key)) {
        return false;
    }
    element.changed();
    return true;
}

std::vector<PropertyPlace> propertyPlacesOf(const IDObject &object) {
    std::vector<PropertyPlace> places;
    for (const Element *at = Element::of(&object); at != nullptr; at = at->owner()) {
        if (at->properties() != nullptr) {
            places.push_back({.table = *at->properties(), .holder = &at->object()});
        }
    }
    for (const PropertySet &set : installedPropertySets()) {
        places.push_back({.table = set.table(), .set = &set});
    }
    return places;
}

} // namespace orchard
