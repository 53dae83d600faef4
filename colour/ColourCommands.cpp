// The commands of the colour tools.
#include "colour/ShowMagnifier.h"
#include "toolkit/support/CommandRegistry.h"

namespace {

const CommandRegistrar showMagnifierCommand("Show Magnifier", [] { showMagnifier(); }, UIString(), UIString(),
                                            cmdScopeTools);

} // namespace
