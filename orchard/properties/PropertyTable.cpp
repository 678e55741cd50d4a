#include "orchard/properties/PropertyTable.h"

#include "orchard/properties/PropertyData.h"
#include "orchard/properties/PropertyKey.h"

namespace orchard {
namespace {

constexpr std::size_t few = 12; ///< entries up to which a linear search of their hashes is faster
constexpr auto notFound = static_cast<std::size_t>(-1);

PropertyKey keyOf(const PropertyTable::Entry &entry) {
    return {entry.subject, entry.metaclass, entry.property->data().name.view()};
}

} // namespace

PropertyTable::PropertyTable(IObject &holder) : holder_(&holder) {}
PropertyTable::PropertyTable() = default;
PropertyTable::~PropertyTable() = default;

std::size_t PropertyTable::indexOf(const PropertyKey &key) const {
    if (entries_.empty()) {
        return notFound;
    }
    const std::uint64_t hash = key.hash();
    if (entries_.size() <= few) {
        for (std::size_t i = 0; i < hashes_.size(); ++i) {
            if (hashes_[i] == hash && keyOf(entries_[i]) == key) {
                return i;
            }
        }
        return notFound;
    }
    const auto [first, last] = byHash_.equal_range(hash);
    for (auto at = first; at != last; ++at) {
        if (keyOf(entries_[at->second]) == key) {
            return at->second;
        }
    }
    return notFound;
}

void PropertyTable::index(std::size_t entry) {
    if (entries_.size() == few + 1 && byHash_.empty()) {
        for (std::size_t i = 0; i < hashes_.size(); ++i) {
            byHash_.emplace(hashes_[i], i);
        }
    } else if (entries_.size() > few) {
        byHash_.emplace(hashes_[entry], entry);
    }
}

IProperty *PropertyTable::find(std::string_view subject, std::string_view metaclass, std::string_view name) const {
    const std::size_t found = indexOf({subject, metaclass, name});
    return found == notFound ? nullptr : entries_[found].property.get();
}

IProperty &PropertyTable::set(std::string_view subject, std::string_view metaclass, std::string_view name,
                              std::string_view type, std::string_view value) {
    const PropertyKey key{subject, metaclass, name};
    if (const std::size_t found = indexOf(key); found != notFound) {
        IProperty::Data &data = entries_[found].property->data();
        data.type = type;
        data.value = value;
        return *entries_[found].property;
    }
    auto data = std::make_unique<IProperty::Data>();
    data->name = name;
    data->type = type;
    data->value = value;
    data->subject = subject;
    data->metaclass = metaclass;
    data->holder = holder_;
    const std::uint64_t hash = key.hash();
    entries_.push_back(
        {std::string(subject), std::string(metaclass), std::make_unique<IProperty>(std::move(data))});
    hashes_.push_back(hash);
    index(entries_.size() - 1);
    return *entries_.back().property;
}

bool PropertyTable::remove(std::string_view subject, std::string_view metaclass, std::string_view name) {
    const std::size_t found = indexOf({subject, metaclass, name});
    if (found == notFound) {
        return false;
    }
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(found));
    hashes_.erase(hashes_.begin() + static_cast<std::ptrdiff_t>(found));
    byHash_.clear();
    if (entries_.size() > few) {
        for (std::size_t i = 0; i < hashes_.size(); ++i) {
            byHash_.emplace(hashes_[i], i);
        }
    }
    return true;
}

void PropertyTable::setHolder(IObject &holder) {
    holder_ = &holder;
    for (const Entry &entry : entries_) {
        entry.property->data().holder = &holder;
    }
}

} // namespace orchard
