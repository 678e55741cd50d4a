#include "apps/orchard-cm/model/Unresolved.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/SPString.h"

#include <optional>

namespace orchard_cm {

namespace {

constexpr std::size_t longestChain = 20; // a property may refer to itself

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

std::vector<std::string> unresolvedChain(const std::string &halfExpanded, CMArgumentList &args) {
    std::vector<std::string> chain;
    std::string text = halfExpanded;
    while (chain.size() < longestChain) {
        const auto variable = firstVariable(text);
        if (!variable) {
            break;
        }
        chain.push_back(variable->text);
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
    return chain;
}

} // namespace orchard_cm
