#include "orchard/model/PatternOrigin.h"

#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"
#include "orchard/model/Workspace.h"
#include "orchard/properties/InstalledSets.h"
#include "orchard/properties/PropertyData.h"
#include "orchard/properties/PropertyTable.h"
#include "orchard/text/PatternReport.h"

#include <algorithm>

namespace orchard {

namespace {

const IProperty *holderIn(const PropertyTable &table, std::string_view value) {
    const auto found = std::ranges::find(table.entries(), value, [](const PropertyTable::Entry &entry) {
        return entry.property->data().value.view();
    });
    return found == table.entries().end() ? nullptr : found->property.get();
}

const IProperty *holderIn(const Model &model, std::string_view value) {
    const IProperty *holder = nullptr;
    visitSubtree<const Element>(model.project(), [&](const Element &element) {
        if (holder == nullptr && element.properties() != nullptr) {
            holder = holderIn(*element.properties(), value);
        }
    });
    return holder;
}

} // namespace

std::string originOfValue(std::string_view value) {
    for (const auto &model : Workspace::instance().models()) {
        if (const IProperty *const holder = holderIn(*model, value)) {
            return describe(*holder);
        }
    }
    for (const PropertySet &set : installedPropertySets()) {
        if (const IProperty *const holder = holderIn(set.table(), value)) {
            return describe(*holder);
        }
    }
    return {};
}

void reportPatternsWithTheirOrigin() {
    setPatternOriginFinder(originOfValue);
    setPatternReporter([](const PatternProblem &problem) {
        const std::string text = problem.message();
        LogTrace::Log(LogTrace::Log::cm).Min("orchard/properties", 0, text);
        static_cast<void>(notifyUserAndAsk(text, MB_ICONEXCLAMATION, 0, messageLevelDefault));
    });
}

} // namespace orchard
