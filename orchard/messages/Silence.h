// How many SilenceMessageObjects live.
#pragma once

namespace orchard {

int silenceDepth();

} // namespace orchard
