#include "apps/orchard-cm/model/Unresolved.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/Variable.h"

#include <algorithm>
#include <optional>

namespace orchard_cm {

namespace {

/// Returns the value of the first argument or of the property with that name, if there is one.
std::optional<CString> valueOf(const CString &name, CMArgumentList &args) {
    for (CMArgument *const argument : args) {
        if (argument != nullptr && argument->isNamed(name) != 0) {
            return argument->substitute(name);
        }
    }
    if (const IProperty *const property = CMProperty::getToolProperty(name, nullptr, 0, false)) {
        return property->getValue();
    }
    return {};
}

} // namespace

Unresolved findUnresolved(const std::string &halfExpanded, CMArgumentList &args) {
    Unresolved found;
    std::vector<CString> names;
    std::string text = halfExpanded;
    while (const auto variable = findVariable(text)) {
        found.chain.push_back(variable->text.str());
        found.refersToItself = std::ranges::any_of(
            names, [&](const CString &name) { return name.CompareNoCase(variable->name) == 0; });
        if (found.refersToItself) {
            break;
        }
        names.push_back(variable->name);
        const auto value = valueOf(variable->name, args);
        if (!value) {
            break;
        }
        CString expanded;
        CString error;
        if (CMProperty::Expand(*value, args, expanded, error, false) != 0) {
            found.exceedsLimit = true; // the value can be expanded alone
            break;
        }
        text = expanded.str();
    }
    return found;
}

std::string whatFailed(const Unresolved &unresolved) {
    return "'" + unresolved.chain.back() + "' " +
           (unresolved.refersToItself ? "refers to itself"
            : unresolved.exceedsLimit
                ? "is in properties that refer to each other too deeply, or give too long a text"
                : "could not be resolved");
}

} // namespace orchard_cm
