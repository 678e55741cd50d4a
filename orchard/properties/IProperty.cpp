// Implements IProperty with this host's data of a property.
#include "CM/host/IProperty.h"

#include "CM/host/IDObject.h"
#include "orchard/properties/PropertyData.h"

IProperty::IProperty(const IProperty *other) : data_(std::make_unique<Data>()) {
    if (other != nullptr) {
        data_->name = other->data_->name;
        data_->type = other->data_->type;
        data_->value = other->data_->value;
    }
}

IProperty::IProperty(std::unique_ptr<Data> data) : data_(std::move(data)) {}

IProperty::~IProperty() = default;

CString IProperty::getName() const { return data_->name; }
CString IProperty::getType() const { return data_->type; }
CString IProperty::getValue() const { return data_->value; }

bool IProperty::getBool() const {
    const CString &value = data_->value;
    return value.CompareNoCase("True") == 0 || value.CompareNoCase("Yes") == 0 || value == "1";
}

void IProperty::setValue(const CString &value) {
    if (data_->value == value) {
        return; // a notification without a change would mark the model as modified
    }
    const auto &handler = orchard::installedChangeHandler();
    if (data_->isInstalled && handler && handler(data_->subject, data_->metaclass, *this, value)) {
        return;
    }
    data_->value = value;
    if (data_->holder != nullptr) {
        data_->holder->doNotify();
    }
}

void IProperty::setName(const CString &name) {
    if (!data_->subject.empty()) {
        return; // renaming it would make it impossible to find in its table
    }
    data_->name = name;
}
void IProperty::setType(const CString &type) { data_->type = type; }
