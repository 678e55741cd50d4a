#include "orchard/properties/PropertyData.h"

#include "CM/host/IDObject.h"

#include <utility>

namespace orchard {
namespace {

InstalledChangeHandler &handlerInForce() {
    static InstalledChangeHandler handler;
    return handler;
}

} // namespace

std::string describe(const IProperty &property) {
    const IProperty::Data &data = property.data();
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

void setInstalledChangeHandler(InstalledChangeHandler handler) { handlerInForce() = std::move(handler); }
const InstalledChangeHandler &installedChangeHandler() { return handlerInForce(); }

} // namespace orchard
