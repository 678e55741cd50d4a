#include "CM/platform/Registry.h"

#include "CM/platform/Files.h"
#include "CM/platform/RegistryPlaces.h"

namespace platform {

Registry Registry::open(const Report &report) {
    const RegistryPlaces places = registryPlaces();
    CString tried;
    for (const CString &place : places.files) {
        if (places.isBinding || fileExists(place)) {
            return read(place, report);
        }
        tried += (tried.IsEmpty() ? "" : ", ") + place;
    }
    report("there is no registry file; it is looked for in " + tried);
    return {};
}

Registry Registry::read(const CString &path, const Report &report) {
    constexpr std::size_t largest = 64U << 20U;
    const auto refused = [&](const CString &reason) {
        report("the registry file " + path + " can't be read: " + reason);
        return Registry();
    };
    if (fileExists(path) && !isRegularFile(path)) {
        return refused("it is not a regular file");
    }
    const auto text = readFile(path, largest + 1);
    if (!text) {
        return refused(lastErrorText());
    }
    return text->size() > largest ? refused("it is larger than 64 MiB") : parse(*text, path, report);
}

std::string Registry::folded(const CString &name) {
    CString lower = name;
    return lower.MakeLower().str();
}

const Registry::Key *Registry::find(const CString &key) const {
    CString name = key;
    const auto found = keys_.find(folded(name.TrimRight("\\")));
    return found == keys_.end() ? nullptr : &found->second;
}

std::optional<RegistryText> Registry::text(const CString &key, const CString &name) const {
    const Key *const values = find(key);
    if (values == nullptr) {
        return std::nullopt;
    }
    const auto found = values->find(folded(name));
    return found == values->end() ? std::nullopt : std::optional(found->second.text);
}

std::vector<CString> Registry::textNames(const CString &key) const {
    std::vector<CString> names;
    if (const Key *const values = find(key)) {
        for (const auto &[ignored, value] : *values) {
            names.push_back(value.name);
        }
    }
    return names;
}

} // namespace platform
