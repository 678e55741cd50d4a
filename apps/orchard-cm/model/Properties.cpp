#include "apps/orchard-cm/model/Properties.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Failure.h"
#include "apps/orchard-cm/base/Suggest.h"
#include "orchard/model/ModelView.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyData.h"
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

struct Seen {
    const std::string &metaclass;
    const IProperty &property;
    const std::string &source;
};

/// Calls `take` for each property of the CM subject that is set on the object or an owner, the nearest first, then
/// for the installed ones.
template <class TAKE> void walk(const IDObject &object, TAKE &&take) {
    const auto walkTable = [&](const orchard::PropertyTable &table, const std::string &source) {
        for (const auto &entry : table.entries()) {
            if (IPN::CM.CompareNoCase(entry.subject) == 0) {
                take(Seen{entry.metaclass, *entry.property, source});
            }
        }
    };
    for (const IDObject *at = &object; at != nullptr; at = at->getOwner()) {
        if (const auto *const table = orchard::ownPropertiesOf(*at)) {
            walkTable(*table, sourceOf(*at));
        }
    }
    for (const auto &set : orchard::installedPropertySets()) {
        walkTable(set.table(), "property set " + set.name());
    }
}

PropertyFacts factsOf(const Seen &seen) {
    return {seen.metaclass, seen.property.getName().str(), seen.property.getValue().str(), seen.source,
            seen.property.data().source};
}

bool same(const std::string &left, const std::string &right) { return CString(left).CompareNoCase(right) == 0; }

[[noreturn]] void failUnknown(const IDObject &object, const std::string &key, const std::string &where) {
    Suggester suggester(key);
    walk(object, [&](const Seen &seen) { suggester.offer(seen.property.getName().str()); });
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
        std::optional<PropertyFacts> found;
        walk(object, [&](const Seen &seen) {
            if (!found && same(seen.metaclass, wanted) && same(seen.property.getName().str(), key)) {
                found = factsOf(seen);
            }
        });
        if (found) {
            return found;
        }
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
    std::set<std::pair<std::string, std::string>> taken;
    const CString wanted = CString(text).MakeLower();
    walk(object, [&](const Seen &seen) {
        const CString key = seen.property.getName().MakeLower();
        if (key.Find(wanted) >= 0 && taken.emplace(CString(seen.metaclass).MakeLower().str(), key.str()).second) {
            properties.push_back(factsOf(seen));
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
                      "Set ORCHARD_SHARE to the directory that holds Orchard's property sets.");
    }
    IProperty property(model);
    property.setName(key);
    property.setValue(value);
    object.storeProperty(IPN::CM, metaclass, &property);
}

PropertyBefore::PropertyBefore(IDObject &object, std::string metaclass, std::string key)
    : object_(object), metaclass_(std::move(metaclass)), key_(std::move(key)),
      wasModified_(object.getSaveUnit() != nullptr && object.getSaveUnit()->isModified()) {
    if (const IProperty *const own = object.findOwnProperty(IPN::CM, metaclass_, key_)) {
        own_ = std::make_unique<IProperty>(own);
    }
}

void PropertyBefore::keepUnless(const std::function<void()> &change) {
    try {
        change();
    } catch (...) {
        restore();
        throw;
    }
}

void PropertyBefore::restore() {
    if (own_) {
        object_.storeProperty(IPN::CM, metaclass_, own_.get());
    } else {
        orchard::removeProperty(object_, IPN::CM.str(), metaclass_, key_);
    }
    if (IUnit *const unit = object_.getSaveUnit(); unit != nullptr && !wasModified_) {
        unit->setModified(0, false);
    }
}

IProperty &toolProperty(const std::string &key) {
    if (IProperty *const property = CMProperty::getToolProperty(key, nullptr, IProperty::inherited, false)) {
        return *property;
    }
    failUnknown(defaultReferee(), key, "for " + toolName());
}

} // namespace orchard_cm
