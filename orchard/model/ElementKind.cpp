#include "orchard/model/ElementKind.h"

#include "CM/platform/CString.h"

#include <array>

namespace orchard {

namespace {

constexpr std::array<KindTraits, 11> table{{
    {"project", "Project", ".ory", ".or1"},
    {"subsystem", "Subsystem", ".osb", ".os1"},
    {"class", "Class", ".ocl", ".oc1"},
    {"component", "Component", ".ocm", ".om1"},
    {"file", "File", ".ofl", ".of1"},
    {"embedded", "Controlled File", "", ""},
    {"workspace", "Workspace", "", ""},
    {"configuration", "Configuration", "", ""},
    {"fragment", "File Fragment", "", ""},
    {"attribute", "Attribute", "", ""},
    {"operation", "Operation", "", ""},
}};

template <class TEST> std::optional<Kind> firstKind(TEST &&test) {
    for (std::size_t at = 0; at < table.size(); ++at) {
        if (test(table[at])) {
            return static_cast<Kind>(at);
        }
    }
    return std::nullopt;
}

} // namespace

const KindTraits &traitsOf(Kind kind) { return table[static_cast<std::size_t>(kind)]; }

std::optional<Kind> kindWithTag(std::string_view tag) {
    return firstKind([&](const KindTraits &traits) { return traits.tag == tag; });
}

std::optional<Kind> kindWithExtension(std::string_view extension) {
    if (extension.empty()) {
        return std::nullopt;
    }
    const NoCaseEqual same;
    return firstKind([&](const KindTraits &traits) {
        return same(traits.extension, extension) || same(traits.oldExtension, extension);
    });
}

bool mayHold(Kind outer, Kind inner) {
    switch (inner) {
    case Kind::subsystem:
    case Kind::component:
        return outer == Kind::project || outer == Kind::subsystem;
    case Kind::classKind:
        return outer == Kind::project || outer == Kind::subsystem || outer == Kind::classKind;
    case Kind::file:
        return outer == Kind::component || outer == Kind::classKind || outer == Kind::subsystem;
    case Kind::embedded:
        return isFileKind(outer);
    case Kind::configuration:
        return outer == Kind::component;
    case Kind::fragment:
        return outer == Kind::file || outer == Kind::fragment;
    case Kind::attribute:
    case Kind::operation:
        return outer == Kind::classKind;
    default:
        return false;
    }
}

} // namespace orchard
