#include "tests/support/recording_host/PropertyState.h"

#include "CM/host/IDObject.h"
#include "tests/support/recording_host/RecordingHost.h"

IProperty::IProperty(const IProperty *other)
    : data_(other == nullptr ? std::make_unique<Data>() : std::make_unique<Data>(*other->data_)) {
    data_->holder = nullptr;
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
    RecordingHost::current().note("set property " + data_->name + "=" + value);
    data_->value = value;
    if (data_->holder != nullptr) {
        data_->holder->doNotify();
    }
}
void IProperty::setName(const CString &name) { data_->name = name; }
void IProperty::setType(const CString &type) { data_->type = type; }
IFile *IProperty::getFile() const { return data_->file; }

namespace recording {

IProperty &putProperty(PropertyMap &map, const PropertyName &name, const CString &value, IObject *holder) {
    auto &place = map[name];
    if (place == nullptr) {
        auto data = std::make_unique<IProperty::Data>();
        data->name = name.key;
        data->type = "String";
        data->holder = holder;
        place = std::make_unique<IProperty>(std::move(data));
    }
    place->data().value = value;
    return *place;
}

} // namespace recording
