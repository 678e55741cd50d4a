// Lets the user choose the provider's options for a command.
#pragma once

#include "CM/CMSupport/provider/ProviderRun.h"
#include "CM/platform/CString.h"
#include "CM/scc/scc.h"

namespace provider {

/// Asks whether the provider has options for the command, and if so has it show them; CMProperty::getPvOptions()
/// receives the choice. `trace` goes to the debug trace. Returns false if the user has cancelled.
bool chooseOptions(const ProviderRun &run, void *context, SCCCOMMAND command, const CString &trace);

} // namespace provider
