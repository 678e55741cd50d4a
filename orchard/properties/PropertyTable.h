// Holds the properties set on one element or in one installed set.
#pragma once

#include "CM/host/IProperty.h"
#include "orchard/OrchardApi.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class IObject;

namespace orchard {

struct PropertyKey;

/// Keeps properties in the order in which they were set. Compares subjects, metaclasses and names ignoring case. A
/// property keeps its address in memory until it is removed.
class ORCHARD_API PropertyTable {
  public:
    struct Entry {
        std::string subject;
        std::string metaclass;
        std::unique_ptr<IProperty> property;
    };

    /// Notifies `holder` by IObject::doNotify when a property's value changes (IProperty::setValue).
    explicit PropertyTable(IObject &holder);
    /// A table that notifies nobody of changes.
    PropertyTable();
    ~PropertyTable();
    PropertyTable(const PropertyTable &) = delete;
    PropertyTable &operator=(const PropertyTable &) = delete;

    /// The property, or null.
    [[nodiscard]] IProperty *find(std::string_view subject, std::string_view metaclass,
                                  std::string_view name) const;
    /// Adds a property, or changes the one with the same subject, metaclass and name; notifies nobody.
    IProperty &set(std::string_view subject, std::string_view metaclass, std::string_view name,
                   std::string_view type, std::string_view value);
    /// Returns whether the property was there.
    bool remove(std::string_view subject, std::string_view metaclass, std::string_view name);
    [[nodiscard]] const std::vector<Entry> &entries() const { return entries_; }
    /// Call this when the table is moved to another object.
    void setHolder(IObject &holder);

  private:
    [[nodiscard]] std::size_t indexOf(const PropertyKey &key) const;
    void index(std::size_t entry);

    IObject *holder_ = nullptr;
    std::vector<Entry> entries_;
    std::vector<std::uint64_t> hashes_; ///< of the entries; a small table is searched linearly
    /// Entries by hash; filled only for a large table.
    std::unordered_multimap<std::uint64_t, std::size_t> byHash_;
};

} // namespace orchard
