#include "apps/orchard-cm/model/RefusedCharacters.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "apps/orchard-cm/operation/TextCheck.h"

namespace orchard_cm {

namespace {

std::string refused(const char *key) {
    const IProperty *const property = CMProperty::getToolProperty(key, nullptr, IProperty::inherited, false);
    return property == nullptr ? std::string(shellCharacters) : property->getValue().str();
}

} // namespace

std::string refusedInLabel() { return refused("RefusedInLabel"); }
std::string refusedInLog() { return refused("RefusedInLog"); }

} // namespace orchard_cm
