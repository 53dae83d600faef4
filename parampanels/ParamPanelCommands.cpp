// The commands that open the parameter panels' test panels.
#include "frame/ToolPanels.h"
#include "parampanels/UIBuilderTest2Panel.h"
#include "parampanels/UIBuilderTestPanel.h"
#include "toolkit/support/CommandRegistry.h"

namespace {

const CommandRegistrar uiBuilderTestPanel(
    "makeUIBuilderTestPanel", [] { openToolPanel(new UIBuilderTestPanel(), ToolPlacement::Centred); }, UIString(),
    UIString(), cmdScopeTools);

const CommandRegistrar uiBuilderTest2(
    "UIBuilderTest2", [] { openToolPanel(new UIBuilderTest2Panel(), ToolPlacement::Centred); }, UIString(),
    UIString(), cmdScopeTools);

} // namespace
