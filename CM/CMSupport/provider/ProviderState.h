// ProviderState: holds the process-wide state of the provider, which outlives projects. Callers use it through
// CMProperty.
#pragma once

#include "CM/CMSupport/provider/FileNameList.h"
#include "CM/CMSupport/provider/SCCdll.h"
#include "CM/CMSupport/provider/pvContextStruct.h"

#include <memory>
#include <vector>

struct ProviderState {
    SCCdll library;
    int isLoaded = 0; ///< the library has been loaded, or could not be
    int isInitialized = 0;
    int isSetProjectPath = 0;
    int isConnected = 0;
    char *currentProjectName = nullptr; ///< belongs to the code that has set it
    void *context = nullptr;            ///< of operations on archive items, which have no unit
    void *options = nullptr;            ///< the command options that were chosen last
    int isReentrant = 0;                ///< these two capabilities are never cleared
    int hasCheckOutComment = 0;
    FileNameList fileNames;
    pvContextStructList contexts{10}; ///< in the order of their creation
    /// Records that have left the list, and that callers may still use.
    std::vector<std::unique_ptr<pvContextStruct>> formerContexts;
};

/// Returns the state of this process. It is never destroyed, because at the end of the process the contexts belong
/// to the provider.
ProviderState &providerState();
