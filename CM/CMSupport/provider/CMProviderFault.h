// CMProviderFault: reports that a provider crashed in one of its entries.
#pragma once

#include "CM/CMSupport/core/CMApi.h"

#include <stdexcept>

/// Leaves a call of the library as an exception, so that all guards on the way restore what they changed; an
/// exception that the provider throws leaves it in the same way, unchanged. what() is a message for the user that
/// names the entry. The provider's state at that time, its contexts included, is unknown.
class ORC_CM_API CMProviderFault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};
