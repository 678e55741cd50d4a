// The properties set on one element, and where a property comes from when the element has none.
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

/// In the order in which they were set. Subjects, metaclasses and names compare without regard to case. A property
/// stays where it is in memory until it is removed.
class ORCHARD_API PropertyTable {
  public:
    struct Entry {
        std::string subject;
        std::string metaclass;
        std::unique_ptr<IProperty> property;
    };

    /// `holder` is told of a change of a property's value (IProperty::setValue) by IObject::doNotify.
    explicit PropertyTable(IObject &holder);
    /// A table whose changes are told to nobody.
    PropertyTable();
    ~PropertyTable();
    PropertyTable(const PropertyTable &) = delete;
    PropertyTable &operator=(const PropertyTable &) = delete;

    /// The property, or null.
    [[nodiscard]] IProperty *find(std::string_view subject, std::string_view metaclass,
                                  std::string_view name) const;
    /// Sets a property, in the place of one of the same subject, metaclass and name; tells nobody.
    IProperty &set(std::string_view subject, std::string_view metaclass, std::string_view name,
                   std::string_view type, std::string_view value);
    /// True if it was there.
    bool remove(std::string_view subject, std::string_view metaclass, std::string_view name);
    [[nodiscard]] const std::vector<Entry> &entries() const { return entries_; }
    /// The table goes over to another object.
    void setHolder(IObject &holder);

  private:
    [[nodiscard]] std::size_t indexOf(const PropertyKey &key) const;
    void index(std::size_t entry);

    IObject *holder_ = nullptr;
    std::vector<Entry> entries_;
    std::vector<std::uint64_t> hashes_; ///< of the entries; few are searched one after the other
    /// Entries by hash, made when there are many.
    std::unordered_multimap<std::uint64_t, std::size_t> byHash_;
};

/// The property of the installed property sets, or null: the last place of every look-up.
[[nodiscard]] ORCHARD_API IProperty *findInstalledProperty(std::string_view subject, std::string_view metaclass,
                                                           std::string_view name);

} // namespace orchard
