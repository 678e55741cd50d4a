#include "CM/platform/Registry.h"

#include "CM/platform/Files.h"
#include "CM/platform/RegistryPlaces.h"

#include <fstream>

namespace platform {

namespace {

constexpr std::size_t largestFile = 64U << 20U;

/// The form in which keys are ordered: lower case, without separators at the end.
std::string ordered(const CString &key) {
    CString folded = key;
    folded.MakeLower().TrimRight("\\");
    return folded.str();
}

std::optional<std::string> contents(const CString &path, CString &reason) {
    if (!fileExists(path)) {
        reason = lastErrorText();
        return std::nullopt;
    }
    if (!isRegularFile(path)) {
        reason = "it is not a regular file";
        return std::nullopt;
    }
    std::ifstream stream(nativeFileName(path), std::ios::binary);
    std::string text;
    constexpr std::size_t step = std::size_t{64} * 1024;
    while (stream && text.size() <= largestFile) {
        const auto before = text.size();
        text.resize(before + step);
        stream.read(text.data() + before, static_cast<std::streamsize>(step));
        text.resize(before + static_cast<std::size_t>(stream.gcount()));
    }
    if (text.size() > largestFile) {
        reason = "it is larger than 64 MiB";
        return std::nullopt;
    }
    if (!stream.eof()) {
        reason = lastErrorText();
        return std::nullopt;
    }
    return text;
}

} // namespace

Registry Registry::open(const Report &report) {
    const RegistryPlaces places = registryPlaces();
    for (const CString &place : places.files) {
        if (places.isBinding || fileExists(place)) {
            return read(place, report);
        }
    }
    CString tried;
    for (const CString &place : places.files) {
        tried += (tried.IsEmpty() ? "" : ", ") + place;
    }
    report("there is no registry file; it is looked for in " + tried);
    return {};
}

Registry Registry::read(const CString &path, const Report &report) {
    CString reason;
    const auto text = contents(path, reason);
    if (!text) {
        report("the registry file " + path + " can't be read: " + reason);
        return {};
    }
    return parse(*text, path, report);
}

const Registry::Key *Registry::find(const CString &key) const {
    const auto found = keys_.find(ordered(key));
    return found == keys_.end() ? nullptr : &found->second;
}

bool Registry::hasKey(const CString &key) const {
    const std::string name = ordered(key);
    if (name.empty()) {
        return false;
    }
    const auto below = keys_.lower_bound(name + '\\');
    return keys_.contains(name) || (below != keys_.end() && below->first.starts_with(name + '\\'));
}

std::optional<RegistryValue> Registry::value(const CString &key, const CString &name) const {
    const Key *entry = find(key);
    if (entry == nullptr) {
        return std::nullopt;
    }
    const auto place = entry->places.find(name.view());
    if (place == entry->places.end()) {
        return std::nullopt;
    }
    return entry->values[place->second]->second;
}

std::vector<CString> Registry::valueNames(const CString &key) const {
    std::vector<CString> names;
    if (const Key *entry = find(key)) {
        for (const auto &present : entry->values) {
            if (present) {
                names.push_back(present->first);
            }
        }
    }
    return names;
}

Registry::Key &Registry::obtain(const CString &key) { return keys_[ordered(key)]; }

void Registry::addKey(const CString &key) { obtain(key); }

void Registry::removeKey(const CString &key) {
    const std::string name = ordered(key);
    keys_.erase(name);
    // Behind the last key below it stands the first one with the character that follows the separator.
    keys_.erase(keys_.lower_bound(name + '\\'), keys_.lower_bound(name + static_cast<char>('\\' + 1)));
}

void Registry::setValue(const CString &key, const CString &name, RegistryValue value) {
    obtain(key).set(name, std::move(value));
}

void Registry::removeValue(const CString &key, const CString &name) {
    if (const auto found = keys_.find(ordered(key)); found != keys_.end()) {
        found->second.remove(name);
    }
}

void Registry::Key::set(const CString &name, RegistryValue value) {
    const auto [place, isNew] = places.try_emplace(name.str(), values.size());
    if (isNew) {
        values.emplace_back(std::in_place, name, std::move(value));
    } else {
        values[place->second]->second = std::move(value);
    }
}

void Registry::Key::remove(const CString &name) {
    if (const auto place = places.find(name.view()); place != places.end()) {
        values[place->second].reset();
        places.erase(place);
    }
}

} // namespace platform
