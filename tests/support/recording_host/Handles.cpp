#include "tests/support/recording_host/Handles.h"

#include "tests/support/recording_host/RecordingHost.h"

namespace recording {

Handle::Handle(CString id) : id_(std::move(id)) { ++RecordingHost::current().handlesAlive; }

IDObject *Handle::doGetObject() const {
    const auto &objects = RecordingHost::current().objectsById;
    const auto found = objects.find(id_);
    return found == objects.end() ? nullptr : found->second;
}

IDObject *Handle::doGetSafeObject() const {
    IDObject *const object = doGetObject();
    return object == nullptr || ObjectState::of(object).beingTakenDown ? nullptr : object;
}

void Handle::release() {
    --RecordingHost::current().handlesAlive;
    delete this;
}

} // namespace recording
