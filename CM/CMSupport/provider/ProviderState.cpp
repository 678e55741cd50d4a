#include "CM/CMSupport/provider/ProviderState.h"

ProviderState &providerState() {
    static auto &state = *new ProviderState;
    return state;
}
