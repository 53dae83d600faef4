#pragma once
// UifStd: the standard metrics, fonts and colours of the user interface, in pixels. Widgets lay themselves out
// from these rather than from numbers of their own, so the whole interface keeps one rhythm.

#include "toolkit/gfx/FontDesc.h"
#include "toolkit/ui/Palette.h"

namespace Pictor {
class Font;
}

// How top-level panels are arranged on the screen.
struct WindowArrangement {
    int titleBarHeight = 22;
    // New and moved panels keep this far inside the screen's edges.
    int screenMargin = 8;
    // Panels opened one after another without a position step down and right by this much.
    int cascadeStep = 24;
    // A press anywhere on a panel brings it to the front.
    bool raiseOnClick = true;

    // How the editor's panels share the screen. The numbers are stored by hosts, so they never change.
    enum Layout : int {
        FreePanels = 0,   // every panel is a window of its own, anywhere on the screen
        SingleWindow = 1, // the panels are areas of one window
    };
    int layout = FreePanels;
};

class UifStd {
public:
    static int getButtonHeight();
    // Between rows of a panel.
    static int getRowGap();
    // Between widgets side by side, and between a widget and its panel's edge.
    static int getWidgetGap();
    static int getIndentWidth();
    // The width of a panel's border.
    static int getBorder();
    static int getScrollBarWidth();
    static Pictor::FontDesc getTitleFont();
    static Pictor::FontDesc getDefaultFont();
    // The two fonts above, loaded once and kept for the life of the process.
    static const Pictor::Font& titleFont();
    static const Pictor::Font& defaultFont();
    // The standard palette.
    static const Palette& getColourScheme();
    // The desktop colour behind every panel.
    static Colour getScreenBackground();
    static const WindowArrangement& getWindowArrangement();
    // The host chooses the arrangement (its layout follows the user's choice); user-interface thread only.
    static void setWindowArrangement(const WindowArrangement& arrangement);
};
