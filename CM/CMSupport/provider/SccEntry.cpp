#include "CM/CMSupport/provider/SccEntry.h"

#include "CM/CMSupport/provider/CMProviderFault.h"
#include "CM/CMSupport/resources/Format.h"
#include "CM/platform/FaultGuard.h"

#include <exception>

void *SccEntryBase::address() {
    if (!library_.isHeld()) {
        return nullptr;
    }
    if (!isLookedUp_) {
        address_ = library_.entry(name_);
        isLookedUp_ = true;
    }
    return address_;
}

void SccEntryBase::callGuarded(const std::function<void()> &call) const {
    std::exception_ptr thrown;
    const bool hasReturned = platform::runGuarded([&call, &thrown] {
        try {
            call();
        } catch (...) {
            thrown = std::current_exception();
        }
    });
    if (thrown) {
        std::rethrow_exception(thrown);
    }
    if (!hasReturned) {
        throw CMProviderFault(resources::format(resources::Text::providerFaulted, {name_}));
    }
}
