// Loads the property sets of this machine: files "NAME.toml" in the directory "toolsets" of the installed share
// directory, and in that of the user's configuration directory. A property of a user's set takes precedence over
// the same property of an installed one.
#pragma once

#include "orchard/OrchardApi.h"
#include "orchard/properties/PropertySet.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orchard {

class ORCHARD_API InstalledSets {
  public:
    /// Reads the sets of the directories, the most important directory first. Leaves out a set with a mistake and
    /// reports the mistake in problems(). A directory that doesn't exist contains no sets.
    explicit InstalledSets(const std::vector<std::filesystem::path> &directories);
    InstalledSets(const InstalledSets &) = delete;
    InstalledSets &operator=(const InstalledSets &) = delete;
    ~InstalledSets();

    /// Returns the property, or null. Takes the same time however many sets and properties there are.
    [[nodiscard]] IProperty *find(std::string_view subject, std::string_view metaclass,
                                  std::string_view name) const;

    /// One message for each set or directory that can't be used, with file, line and column.
    [[nodiscard]] const std::vector<std::string> &problems() const { return problems_; }
    /// The number of sets; at() returns them in order of precedence.
    [[nodiscard]] std::size_t count() const { return sets_.size(); }
    [[nodiscard]] const PropertySet &at(std::size_t index) const { return *sets_[index]; }

    /// The directories that this process searches, the most important first.
    static std::vector<std::filesystem::path> standardDirectories();

  private:
    void readDirectory(const std::filesystem::path &directory);

    std::vector<std::unique_ptr<PropertySet>> sets_;
    std::vector<std::string> problems_;
    struct Index;
    std::unique_ptr<Index> index_;
};

/// Iterates over the installed sets in order of precedence.
class ORCHARD_API InstalledSetRange {
  public:
    class iterator {
      public:
        iterator(const InstalledSets &sets, std::size_t at) : sets_(&sets), at_(at) {}
        const PropertySet &operator*() const { return sets_->at(at_); }
        const PropertySet *operator->() const { return &sets_->at(at_); }
        iterator &operator++() {
            ++at_;
            return *this;
        }
        friend bool operator==(const iterator &, const iterator &) = default;

      private:
        const InstalledSets *sets_;
        std::size_t at_;
    };
    explicit InstalledSetRange(const InstalledSets &sets) : sets_(&sets) {}
    [[nodiscard]] iterator begin() const { return {*sets_, 0}; }
    [[nodiscard]] iterator end() const { return {*sets_, sets_->count()}; }

  private:
    const InstalledSets *sets_;
};

/// The sets of the standard directories, read at the first call. Their mistakes are reported once, in the log and
/// to the user.
ORCHARD_API InstalledSetRange installedPropertySets();

/// Finds a property in the installed property sets, where every look-up ends; returns null if there is none.
[[nodiscard]] ORCHARD_API IProperty *findInstalledProperty(std::string_view subject, std::string_view metaclass,
                                                           std::string_view name);

} // namespace orchard
