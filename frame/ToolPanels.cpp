#include "frame/ToolPanels.h"

#include "toolkit/gfx/Painter.h"
#include "toolkit/ui/Drawable.h"
#include "toolkit/ui/Glob.h"
#include "toolkit/ui/GlobManager.h"
#include "toolkit/ui/Screen.h"

Glob* openToolPanel(Glob* panel, ToolPlacement placement)
{
    if (!is_good_glob_ptr(panel) || panel->parent())
        return nullptr;
    if (!Screen::current()) {
        Glob::destroy(panel);
        return nullptr;
    }

    RedrawSuppressor noRedraws;
    Pictor::StateSaver savedState;

    const XY<int> size = panel->getSize();
    XY<int> wanted;
    switch (placement) {
    case ToolPlacement::Centred:
        panel->setupRootPos(Glob::Centre(0, 0));
        wanted = panel->getPosition();
        break;
    case ToolPlacement::BottomLeft:
        panel->setupRootPos(Glob::BottomLeft());
        wanted = panel->getPosition();
        break;
    case ToolPlacement::AtPointer:
        wanted = GlobManager::getPosForGlob(size);
        break;
    }
    const XY<int> safe = GlobManager::getSafePosForGlob(wanted, size);
    panel->setPos(safe.x, safe.y);

    if (!GlobManager::realize(panel)) {
        Glob::destroy(panel);
        return nullptr;
    }
    return panel;
}
