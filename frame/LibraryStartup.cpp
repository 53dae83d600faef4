// What the library does when it loads, all in one translation unit so that the order is the order written
// here: first the commands, then the start-up settings. (Static objects of one translation unit are made in
// the order they are defined; across translation units the order is unspecified.)
//
// Only commands whose panels exist are registered. The table's place for each command is kept, so a panel
// that arrives later adds its line where it belongs.
#include "frame/StartupSettings.h"
#include "frame/ToolCommands.h"
#include "toolkit/support/CommandRegistry.h"

namespace {

CommandRegistrar tool(const char* name, CommandRegistry::Function open)
{
    return CommandRegistrar(name, std::move(open), UIString(), UIString(), cmdScopeTools);
}

// ---- Commands, in table order
// "Glob Inspector" (scope 2): no widget inspector yet.
// "Glob Inspector 2" (scope 2): no widget tree panel yet.
const CommandRegistrar showLog("ShowLog", [](const Cmd::Context& context) { openLogWindow(context); }, UIString(),
                               UIString(), cmdScopeApplication);
// "Alpha Channel Editor" (scope 2): no alpha channel editor yet.
const CommandRegistrar showMagnifierCommand = tool("Show Magnifier", [] { showMagnifier(); });
// "PageIndexWidgetTest", "Space Divider Test", "SplitTabsWidgetTest" (scope 2): no such test panels yet.
const CommandRegistrar uiBuilderTestPanel = tool("makeUIBuilderTestPanel", openUIBuilderTestPanel);
const CommandRegistrar uiBuilderTest2 = tool("UIBuilderTest2", openUIBuilderTest2Panel);

// ---- Start-up settings, read once, after the commands
[[maybe_unused]] const StartupSettings::Values settingsAtLoad = StartupSettings::current();

} // namespace
