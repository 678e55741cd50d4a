#include "tests/support/recording_host/ObjectState.h"

#include "tests/support/recording_host/Handles.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <stdexcept>

namespace recording {

ObjectState &ObjectState::of(IDObject *object) {
    auto *state = dynamic_cast<ObjectState *>(object);
    if (state == nullptr) {
        throw std::logic_error("not an object of the recording host");
    }
    return *state;
}

const ObjectState &ObjectState::of(const IDObject *object) { return of(const_cast<IDObject *>(object)); }

IUnit *ObjectState::holdingUnit() const {
    for (IDObject *object = self; object != nullptr; object = of(object).owner) {
        if (of(object).saveUnit) {
            return dynamic_cast<IUnit *>(object);
        }
    }
    return nullptr;
}

bool ObjectState::owns(const IDObject *other) const {
    while (other != nullptr && (other = of(other).owner) != nullptr) {
        if (other == self) {
            return true;
        }
    }
    return false;
}

IHandle *ObjectState::newHandle() const {
    if (onGetHandle) {
        onGetHandle();
    }
    return new Handle(id); // the caller releases it with release()
}

void ObjectState::noteNotified() const { RecordingHost::current().note("notify observers of " + name); }

void ObjectState::noteModified(int value, bool notify) {
    CString call;
    call.Format("set modified %s value=%d notify=%d", name.c_str(), value, notify ? 1 : 0);
    RecordingHost::current().note(call);
    modified = value != 0;
}

IProperty *ObjectState::lookUp(const CString &subject, const CString &metaclass, const CString &key, int where,
                               std::vector<int> rest, bool own) const {
    RecordingHost &host = RecordingHost::current();
    const PropertyName wanted{subject, metaclass, key};
    IProperty *const found = host.find(self, wanted, where == IProperty::local);
    host.lookups.push_back({self, wanted, where, std::move(rest), own, found != nullptr});
    return found;
}

void ObjectState::store(const CString &subject, const CString &metaclass, const IProperty *property) {
    const PropertyName wanted{subject, metaclass, property->getName()};
    RecordingHost::current().note("store property " + subject + "/" + metaclass + "/" + wanted.key + "=" +
                                  property->getValue() + " on " + name);
    auto copy = std::make_unique<IProperty>(property);
    copy->data().holder = self;
    properties[wanted] = std::move(copy);
}

} // namespace recording
