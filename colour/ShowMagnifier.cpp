#include "colour/ShowMagnifier.h"

#include "colour/CursorCapturer.h"
#include "colour/MagnifyTool.h"
#include "frame/ToolPanels.h"

Glob* showMagnifier()
{
    auto* magnifier = new MagnifyTool(
        MagnifyTool::InitArgs(1, CursorCapturer::magnifierSize, CursorCapturer::magnifierSize, 8));
    magnifier->setClosesOnClick(true);
    return openToolPanel(magnifier, ToolPlacement::BottomLeft);
}
