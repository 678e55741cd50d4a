#include "apps/orchard-cm/model/Properties.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Failure.h"
#include "apps/orchard-cm/base/Suggest.h"
#include "orchard/model/ModelView.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyTable.h"

#include <algorithm>
#include <array>
#include <set>
#include <tuple>

namespace orchard_cm {

namespace {

std::string toolName() {
    const IProperty *const tool = CMProperty::getCMTool(nullptr, IProperty::inherited);
    return tool == nullptr ? std::string() : tool->getValue().str();
}

std::string sourceOf(const IDObject &object) {
    if (dynamic_cast<const IProject *>(&object) != nullptr) {
        return "project " + object.getName().str();
    }
    return object.getMetaClassDisplayName().str() + " " + orchard::pathInModel(object);
}

/// Calls `take(metaclass, key, value, source)` for each property of the CM subject that is set on the object or an
/// owner, the nearest first, then for the installed ones.
template <class TAKE> void walk(const IDObject &object, TAKE &&take) {
    const std::string subject = IPN::CM.str();
    for (const IDObject *at = &object; at != nullptr; at = at->getOwner()) {
        const auto *const table = orchard::ownPropertiesOf(*at);
        if (table == nullptr) {
            continue;
        }
        const std::string source = sourceOf(*at);
        for (const auto &entry : table->entries()) {
            if (entry.subject == subject) {
                take(entry.metaclass, entry.property->getName().str(), entry.property->getValue().str(), source);
            }
        }
    }
    for (const auto &set : orchard::installedPropertySets()) {
        for (const auto &entry : set.table().entries()) {
            if (entry.subject == subject) {
                take(entry.metaclass, entry.property->getName().str(), entry.property->getValue().str(),
                     "property set " + set.name());
            }
        }
    }
}

[[noreturn]] void failUnknown(const IDObject &object, const std::string &key, const std::string &where) {
    Suggester suggester(key);
    walk(object, [&](const auto & /*metaclass*/, const std::string &name, const auto & /*value*/,
                     const auto & /*source*/) { suggester.offer(name); });
    throw Failure(ExitCode::failed, "there is no property '" + key + "' " + where,
                  "Run 'orchard-cm property list' to see all of them.")
        .meaning(suggester.best());
}

} // namespace

IDObject &defaultReferee() {
    if (IDObject *const referee = CMProperty::getReferee(nullptr)) {
        return *referee;
    }
    throw Failure(ExitCode::failed, "the project has neither an active component nor a configuration",
                  "Name with --unit on which unit properties are looked up.");
}

std::optional<PropertyFacts> findProperty(const IDObject &object, const std::string &key,
                                          const std::string &metaclass) {
    std::vector<std::string> metaclasses{metaclass};
    if (metaclass.empty()) {
        metaclasses = {toolName(), IPN::CMGeneral.str(), IPN::General.str()};
    }
    for (const auto &wanted : metaclasses) {
        const IProperty *const property = object.findProperty(IPN::CM, wanted, key, IProperty::inherited);
        if (wanted.empty() || property == nullptr) {
            continue;
        }
        PropertyFacts facts{wanted, key, property->getValue().str(), {}};
        walk(object, [&](const std::string &at, const std::string &name, const auto & /*value*/,
                         const std::string &source) {
            if (facts.source.empty() && at == wanted && name == key) {
                facts.source = source;
            }
        });
        return facts;
    }
    return {};
}

PropertyFacts requireProperty(const IDObject &object, const std::string &key, const std::string &metaclass) {
    if (auto found = findProperty(object, key, metaclass)) {
        return *found;
    }
    failUnknown(object, key, metaclass.empty() ? "for " + toolName() : "under '" + metaclass + "'");
}

std::vector<PropertyFacts> propertiesOf(const IDObject &object, const std::string &text) {
    std::vector<PropertyFacts> properties;
    std::set<std::pair<std::string, std::string>> seen;
    walk(object, [&](const std::string &metaclass, const std::string &key, const std::string &value,
                     const std::string &source) {
        if (CString(key).MakeLower().Find(CString(text).MakeLower()) >= 0 && seen.emplace(metaclass, key).second) {
            properties.push_back({metaclass, key, value, source});
        }
    });
    std::ranges::sort(properties, {},
                      [](const PropertyFacts &facts) { return std::tie(facts.metaclass, facts.key); });
    return properties;
}

void setProperty(IDObject &object, const std::string &metaclass, const std::string &key,
                 const std::string &value) {
    // A property is made as a copy of one that is there: of its own kind, or else of the one every project has.
    const IProperty *model = object.findProperty(IPN::CM, metaclass, key, IProperty::inherited);
    if (model == nullptr) {
        model = CMProperty::getCMTool(&object, IProperty::inherited);
    }
    if (model == nullptr) {
        throw Failure(ExitCode::failed, "no property sets are installed, so none can be set",
                      "Set ORCHARD_ROOT to the directory where Orchard is installed.");
    }
    IProperty property(model);
    property.setName(key);
    property.setValue(value);
    object.storeProperty(IPN::CM, metaclass, &property);
}

IProperty &toolProperty(const std::string &key) {
    if (IProperty *const property = CMProperty::getToolProperty(key, nullptr, IProperty::inherited, false)) {
        return *property;
    }
    failUnknown(defaultReferee(), key, "for " + toolName());
}

} // namespace orchard_cm
