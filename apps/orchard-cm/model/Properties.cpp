#include "apps/orchard-cm/model/Properties.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/ToolInUse.h"
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Failure.h"
#include "apps/orchard-cm/base/Suggest.h"
#include "orchard/model/ModelView.h"
#include "orchard/properties/PropertyData.h"
#include "orchard/properties/PropertySet.h"
#include "orchard/properties/PropertyTable.h"

#include <algorithm>
#include <array>
#include <set>
#include <tuple>

namespace orchard_cm {

namespace {

/// Returns the metaclass of the tool in use; empty if there is none.
CString metaclassInUse() {
    IDObject *const referee = CMProperty::getReferee(nullptr);
    return referee == nullptr ? CString()
                              : toolMetaclass(*referee, IProperty::inherited, false).value_or(CString());
}

std::string sourceOf(const IDObject &object) {
    if (dynamic_cast<const IProject *>(&object) != nullptr) {
        return "project " + object.getName().str();
    }
    return object.getMetaClassDisplayName().str() + " " + orchard::pathInModel(object);
}

std::string sourceOf(const orchard::PropertyPlace &place) {
    return place.holder != nullptr ? sourceOf(*place.holder) : "property set " + place.set->name();
}

struct Seen {
    const std::string &metaclass;
    const IProperty &property;
    const orchard::PropertyPlace &place;
};

/// Calls `take` for each property of the CM subject that applies to the object, the one with the highest priority
/// first.
template <class TAKE> void walk(const IDObject &object, TAKE &&take) {
    for (const auto &place : orchard::propertyPlacesOf(object)) {
        for (const auto &entry : place.table.entries()) {
            if (IPN::CM.CompareNoCase(entry.subject) == 0) {
                take(Seen{entry.metaclass, *entry.property, place});
            }
        }
    }
}

PropertyFacts factsOf(const Seen &seen) {
    return {seen.metaclass, seen.property.getName().str(), seen.property.getValue().str(), sourceOf(seen.place),
            seen.property.data().source};
}

/// Returns the facts of a property if it applies to the object.
std::optional<PropertyFacts> factsOf(const IDObject &object, const IProperty &property) {
    std::optional<PropertyFacts> facts;
    walk(object, [&](const Seen &seen) {
        if (&seen.property == &property) {
            facts = factsOf(seen);
        }
    });
    return facts;
}

[[noreturn]] void failUnknown(const IDObject &object, const std::string &key, const std::string &where) {
    Suggester suggester(key);
    walk(object, [&](const Seen &seen) { suggester.offer(seen.property.getName().str()); });
    throw Failure(ExitCode::failed, "there is no property '" + key + "' " + where,
                  "Run 'orchard-cm property list' to see all properties.")
        .meaning(suggester.best());
}

} // namespace

IDObject &defaultReferee() {
    if (IDObject *const referee = CMProperty::getReferee(nullptr)) {
        return *referee;
    }
    throw Failure(ExitCode::failed, "the project has neither an active component nor a configuration",
                  "Use --unit to name the unit whose properties are looked up.");
}

std::optional<PropertyFacts> findProperty(const IDObject &object, const std::string &key,
                                          const std::string &metaclass) {
    std::vector<CString> metaclasses{metaclass};
    if (metaclass.empty()) {
        metaclasses = {metaclassInUse(), IPN::CMGeneral, IPN::General};
    }
    for (const CString &wanted : metaclasses) {
        if (const IProperty *const found = object.findProperty(IPN::CM, wanted, key, IProperty::inherited)) {
            return factsOf(object, *found);
        }
    }
    return {};
}

PropertyFacts requireProperty(const IDObject &object, const std::string &key, const std::string &metaclass) {
    if (auto found = findProperty(object, key, metaclass)) {
        return *found;
    }
    failUnknown(object, key, metaclass.empty() ? "for " + metaclassInUse().str() : "under '" + metaclass + "'");
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
    // A new property is a copy of an existing one: of its own kind, or else of the one that every project has.
    const IProperty *model = object.findProperty(IPN::CM, metaclass, key, IProperty::inherited);
    if (model == nullptr) {
        model = CMProperty::getCMTool(&object, IProperty::inherited);
    }
    if (model == nullptr) {
        throw Failure(ExitCode::failed, "no property sets are installed, so none can be set",
                      "Set ORCHARD_SHARE to the directory that contains Orchard's property sets.");
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

void PropertyBefore::runOrRestore(const std::function<void()> &change) {
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
    failUnknown(defaultReferee(), key, "for " + metaclassInUse().str());
}

} // namespace orchard_cm
