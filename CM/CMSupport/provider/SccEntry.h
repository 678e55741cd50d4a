// SccEntry: one entry of a provider's library, looked up at its first call and called under a guard.
#pragma once

#include "CM/CMSupport/provider/PDLL.h"
#include "CM/scc/scc.h"

#include <functional>

/// The part of an entry that does not depend on its parameters.
class SccEntryBase {
  public:
    /// Whether every provider has the entry, or only one with the capability for it.
    enum class Need { required, optional };

    SccEntryBase(const SccEntryBase &) = delete;
    SccEntryBase &operator=(const SccEntryBase &) = delete;

    /// The exact name of the export.
    [[nodiscard]] const char *name() const { return name_; }
    [[nodiscard]] Need need() const { return need_; }
    /// Returns whether the library that is loaded exports the entry. False without a library.
    [[nodiscard]] bool isExported() { return address() != nullptr; }

  protected:
    /// `library` must outlive the entry; `name` is a literal.
    SccEntryBase(const PDLL &library, const char *name, Need need) : library_(library), name_(name), need_(need) {}
    ~SccEntryBase() = default;

    /// The address of the entry; null without a library or without the export. The first look-up in a loaded
    /// library counts for good, a failed one too.
    [[nodiscard]] void *address();
    /// Makes the call. Throws CMProviderFault if the provider crashes in it; what it throws passes through.
    void callGuarded(const std::function<void()> &call) const;

  private:
    const PDLL &library_;
    const char *name_;
    Need need_;
    bool isLookedUp_ = false;
    void *address_ = nullptr;
};

template <class FUNCTION> class SccEntry;

template <class... ARGS> class SccEntry<long(ARGS...)> : public SccEntryBase {
  public:
    SccEntry(const PDLL &library, const char *name, Need need) : SccEntryBase(library, name, need) {}

    /// Calls the entry and returns its result. Without a loaded library, or if the library lacks the entry,
    /// nothing is called and the result is success, as required: an operation that a provider lacks silently does
    /// nothing.
    long operator()(ARGS... args) {
        const auto function = reinterpret_cast<long (*)(ARGS...)>(address());
        long result = SCC_OK;
        if (function != nullptr) {
            callGuarded([&] { result = function(args...); });
        }
        return result;
    }
};
