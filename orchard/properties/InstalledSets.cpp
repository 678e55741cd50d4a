#include "orchard/properties/InstalledSets.h"

#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"
#include "orchard/base/UserDirectories.h"
#include "orchard/properties/PropertyData.h"
#include "orchard/properties/PropertyKey.h"
#include "orchard/settings/Places.h"

#include <algorithm>
#include <deque>
#include <system_error>
#include <unordered_map>

namespace orchard {
namespace fs = std::filesystem;
namespace {

void notify(const std::string &text) {
    LogTrace::Log(LogTrace::Log::cm).Min("orchard/properties", 0, text);
    static_cast<void>(notifyUserAndAsk(text, MB_ICONEXCLAMATION, 0, messageLevelDefault));
}

const InstalledSets &standardSets() {
    // Callers keep pointers to properties until the process ends, so the sets live as long.
    static const InstalledSets &sets = *new InstalledSets(InstalledSets::standardDirectories());
    static bool isReported = false;
    if (!isReported) {
        isReported = true; // before reporting, which may call this function again
        for (const std::string &problem : sets.problems()) {
            notify("A property set with a mistake is ignored.\n" + problem);
        }
    }
    return sets;
}

} // namespace

struct InstalledSets::Index {
    std::deque<std::string> names; ///< referenced by the keys; a deque does not move its elements
    std::unordered_map<PropertyKey, IProperty *, PropertyKeyHash> properties;
};

InstalledSets::InstalledSets(const std::vector<fs::path> &directories) : index_(std::make_unique<Index>()) {
    for (const fs::path &directory : directories) {
        readDirectory(directory);
    }
    for (const auto &set : sets_) {
        for (const PropertyTable::Entry &entry : set->table().entries()) {
            const std::string &name = index_->names.emplace_back(entry.property->data().name.view());
            const PropertyKey key{entry.subject, entry.metaclass, name};
            index_->properties.try_emplace(key, entry.property.get()); // keeps that of a preceding set
        }
    }
}

InstalledSets::~InstalledSets() = default;

void InstalledSets::readDirectory(const fs::path &directory) {
    std::error_code error;
    if (directory.empty() || !fs::exists(directory, error)) {
        return;
    }
    std::vector<fs::path> files;
    for (fs::directory_iterator at(directory, error), end; !error && at != end; at.increment(error)) {
        if (at->path().extension() == ".toml") {
            files.push_back(at->path());
        }
    }
    if (error) {
        problems_.push_back(directory.string() + ": " + error.message());
    }
    std::sort(files.begin(), files.end());
    for (const fs::path &file : files) {
        std::string problem;
        if (auto set = PropertySet::read(file, problem)) {
            sets_.push_back(std::move(set));
        } else {
            problems_.push_back(problem);
        }
    }
}

IProperty *InstalledSets::find(std::string_view subject, std::string_view metaclass, std::string_view name) const {
    const auto found = index_->properties.find(PropertyKey{subject, metaclass, name});
    return found == index_->properties.end() ? nullptr : found->second;
}

std::vector<fs::path> InstalledSets::standardDirectories() {
    std::vector<fs::path> directories;
    for (const fs::path &place : {userDirectory(), shareDirectory()}) {
        if (!place.empty()) {
            directories.push_back(place / "toolsets");
        }
    }
    return directories;
}

InstalledSetRange installedPropertySets() { return InstalledSetRange(standardSets()); }

IProperty *findInstalledProperty(std::string_view subject, std::string_view metaclass, std::string_view name) {
    return standardSets().find(subject, metaclass, name);
}

} // namespace orchard
