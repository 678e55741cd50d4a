// Finds and stores properties of an element: its own and the inherited ones.
#include "orchard/model/Element.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyTable.h"

namespace orchard {

PropertyTable &Element::makeProperties() {
    if (properties_ == nullptr) {
        properties_ = std::make_unique<PropertyTable>(object());
    }
    return *properties_;
}

void Element::setProperties(std::unique_ptr<PropertyTable> properties) {
    properties_ = std::move(properties);
    if (properties_ != nullptr) {
        properties_->setHolder(object());
    }
}

IProperty *Element::findOwnProperty(std::string_view subject, std::string_view metaclass,
                                    std::string_view key) const {
    return properties_ == nullptr ? nullptr : properties_->find(subject, metaclass, key);
}

IProperty *Element::findProperty(std::string_view subject, std::string_view metaclass, std::string_view key,
                                 int where) const {
    if (where == IProperty::local) {
        return findOwnProperty(subject, metaclass, key);
    }
    for (const Element *at = this; at != nullptr; at = at->owner_) {
        if (IProperty *const found = at->findOwnProperty(subject, metaclass, key)) {
            return found;
        }
    }
    return findInstalledProperty(subject, metaclass, key);
}

void Element::storeProperty(std::string_view subject, std::string_view metaclass, const IProperty *property) {
    if (property == nullptr) {
        return;
    }
    const CString name = property->getName();
    const CString type = property->getType();
    const CString value = property->getValue();
    const IProperty *const present = findOwnProperty(subject, metaclass, name);
    if (present != nullptr && present->getType() == type && present->getValue() == value) {
        return;
    }
    makeProperties().set(subject, metaclass, name, type, value);
    changed();
}

} // namespace orchard
