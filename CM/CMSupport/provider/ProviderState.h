// ProviderState: holds what the process knows about its provider. The state outlives projects; callers reach it
// through CMProperty.
#pragma once

#include "CM/CMSupport/provider/pvContextStruct.h"
#include "CM/platform/CStringList.h"

struct ProviderState {
    int isLoaded = 0; ///< the provider library is loaded
    int isInitialized = 0;
    int isSetProjectPath = 0;
    int isConnected = 0;
    char *currentProjectName = nullptr; ///< belongs to the code that has set it
    void *context = nullptr;            ///< of operations on archive items, which have no unit
    void *options = nullptr;            ///< the command options that were chosen last
    int isReentrant = 0;                ///< these two capabilities are never cleared
    int hasCheckOutComment = 0;
    CStringList fileNames{10};
    pvContextStructList contexts{10}; ///< in the order of their creation
};

/// The one of this process. It is never destroyed: at the end of the process the contexts are the provider's.
ProviderState &providerState();
