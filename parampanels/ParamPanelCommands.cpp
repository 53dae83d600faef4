// The openers of the parameter panels' test panels; frame/LibraryStartup.cpp registers them as commands.
#include "frame/ToolCommands.h"
#include "frame/ToolPanels.h"
#include "parampanels/UIBuilderTest2Panel.h"
#include "parampanels/UIBuilderTestPanel.h"

void openUIBuilderTestPanel()
{
    openToolPanel(new UIBuilderTestPanel(), ToolPlacement::Centred);
}

void openUIBuilderTest2Panel()
{
    openToolPanel(new UIBuilderTest2Panel(), ToolPlacement::Centred);
}
