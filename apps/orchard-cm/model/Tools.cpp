#include "apps/orchard-cm/model/Tools.h"

#include "CM/CMSupport/core/CMProperty.h"
#include "CM/platform/CString.h"
#include "apps/orchard-cm/base/Failure.h"
#include "apps/orchard-cm/base/Suggest.h"
#include "orchard/properties/InstalledSets.h"

#include <algorithm>

namespace orchard_cm {

namespace {
constexpr auto noTool = "None";
}

std::vector<ToolFacts> installedTools() {
    std::vector<ToolFacts> tools;
    for (const auto &set : orchard::installedPropertySets()) {
        if (set.tool().empty()) {
            continue;
        }
        const auto known = std::ranges::find_if(
            tools, [&](const ToolFacts &tool) { return CString(tool.name).CompareNoCase(set.tool()) == 0; });
        if (known == tools.end()) {
            tools.push_back({set.tool(), set.description(), {set.file()}});
            continue;
        }
        known->files.push_back(set.file());
        if (known->description.empty()) {
            known->description = set.description();
        }
    }
    return tools;
}

std::string toolInUse() {
    const IProperty *const tool = CMProperty::getCMTool(nullptr, IProperty::inherited);
    return tool == nullptr || tool->getValue().CompareNoCase(noTool) == 0 ? std::string() : tool->getValue().str();
}

std::string installedToolNamed(const std::string &name) {
    if (CString(name).CompareNoCase(noTool) == 0) {
        return noTool;
    }
    Suggester suggester(name);
    for (const auto &tool : installedTools()) {
        if (CString(name).CompareNoCase(tool.name) == 0) {
            return tool.name;
        }
        suggester.offer(tool.name);
    }
    throw Failure(ExitCode::failed, "no property set is installed for a CM tool '" + name + "'",
                  "Run 'orchard-cm tools' to see the installed ones.")
        .meaning(suggester.best());
}

} // namespace orchard_cm
