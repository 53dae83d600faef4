// The command that opens the log window.
#include "logging/ShowLog.h"

namespace {

const CommandRegistrar showLog("ShowLog", [](const Cmd::Context& context) { openLogWindow(context); }, UIString(),
                               UIString(), cmdScopeApplication);

} // namespace
