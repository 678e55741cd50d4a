#include "apps/orchard-cm/model/Unresolved.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/SPString.h"

#include <algorithm>
#include <optional>

namespace orchard_cm {

namespace {

struct Variable {
    std::string text;
    CString name;
};

std::optional<Variable> firstVariable(const std::string &text) {
    SPStringList matches;
    if (SPString(text).m(R"(\$\{?([a-zA-Z_][a-zA-Z0-9_]*)\}?)", matches, "i") == 0) {
        return {};
    }
    return Variable{matches[0].str(), matches[1]};
}

/// What the first argument or the property of that name holds, if there is one.
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
    while (const auto variable = firstVariable(text)) {
        found.chain.push_back(variable->text);
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
            break;
        }
        text = expanded.str();
    }
    return found;
}

std::string whatFailed(const Unresolved &unresolved) {
    return "'" + unresolved.chain.back() + "' " +
           (unresolved.refersToItself ? "refers to itself" : "could not be resolved");
}

} // namespace orchard_cm
