#include "orchard/properties/PropertyData.h"

#include "CM/host/IDObject.h"

#include <mutex>
#include <type_traits>
#include <utility>

static_assert(std::is_trivially_destructible_v<std::mutex>);

/// The list of all living properties, which come and go on any thread. It has no destructor, as properties may
/// outlive every static object.
struct LivingProperties {
    static inline std::mutex mutex;
    static inline IProperty::Data *first = nullptr;

    static void enter(IProperty::Data &data) noexcept {
        const std::lock_guard lock(mutex);
        data.previous_ = nullptr;
        data.next_ = first;
        if (first != nullptr) {
            first->previous_ = &data;
        }
        first = &data;
    }
    static void leave(IProperty::Data &data) noexcept {
        const std::lock_guard lock(mutex);
        (data.previous_ == nullptr ? first : data.previous_->next_) = data.next_;
        if (data.next_ != nullptr) {
            data.next_->previous_ = data.previous_;
        }
    }
    static const IProperty::Data *next(const IProperty::Data &data) { return data.next_; }
};

IProperty::Data::Data() noexcept { LivingProperties::enter(*this); }

IProperty::Data::Data(const Data &other) : name(other.name), type(other.type), value(other.value) {
    LivingProperties::enter(*this);
}

IProperty::Data::~Data() { LivingProperties::leave(*this); }

namespace orchard {
namespace {

std::string describe(const IProperty::Data &data) {
    std::string text = "property \"" + data.name.str() + "\"";
    if (!data.metaclass.empty()) {
        text += " of " + data.metaclass;
    }
    if (!data.source.empty()) {
        return text + " (" + data.source + ")";
    }
    if (const auto *const object = dynamic_cast<const IDObject *>(data.holder)) {
        text += " (set on " + object->getMetaClassDisplayName().str() + " " + object->getName().str() + ")";
    }
    return text;
}

InstalledChangeHandler &handlerInForce() {
    static InstalledChangeHandler handler;
    return handler;
}

} // namespace

std::string ownerOfValue(std::string_view value) {
    const std::lock_guard lock(LivingProperties::mutex);
    for (const IProperty::Data *data = LivingProperties::first; data != nullptr;
         data = LivingProperties::next(*data)) {
        if (!data->subject.empty() && data->value.view() == value) {
            return describe(*data);
        }
    }
    return {};
}

void setInstalledChangeHandler(InstalledChangeHandler handler) { handlerInForce() = std::move(handler); }
const InstalledChangeHandler &installedChangeHandler() { return handlerInForce(); }

} // namespace orchard
